#include "VantoraHost/verification/PdfFile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDFExc.hh>
#include <set>

namespace vantora::verification {

namespace {

constexpr const char* inheritedKeys[inheritedCount] = {"/Resources", "/MediaBox", "/CropBox",
                                                       "/Rotate"};

tl::expected<std::string, Refusal> readWhole(const Source& source)
{
    if (source.path.empty()) {
        return std::string(source.bytes);
    }
    std::ifstream in(source.path, std::ios::binary | std::ios::ate);
    const std::streamoff size = in ? static_cast<std::streamoff>(in.tellg()) : -1;
    std::string bytes;
    if (size >= 0) {
        bytes.resize(static_cast<std::size_t>(size));
        in.seekg(0);
        in.read(bytes.data(), size);
    }
    if (!in || size < 0) {
        return tl::unexpected<Refusal>(Refusal{Refusal::Why::Unreadable, false, "cannot be read"});
    }
    return bytes;
}

} // namespace

tl::expected<std::unique_ptr<PdfFile>, Refusal>
PdfFile::open(const Source& source, const std::vector<std::string>& passwords)
{
    auto bytes = readWhole(source);
    if (!bytes) {
        return tl::unexpected<Refusal>(std::move(bytes.error()));
    }
    std::unique_ptr<PdfFile> file(new PdfFile);
    file->bytes_ = std::move(*bytes);
    // Offsets in a file count from its header.
    const std::size_t header = file->bytes_.substr(0, 1024).find("%PDF-");
    if (header != std::string::npos) {
        file->bytes_.erase(0, header);
    }
    std::vector<std::string> all = {""};
    all.insert(all.end(), passwords.begin(), passwords.end());
    try {
        for (const std::string& password : all) {
            if (file->tryPassword(password)) {
                file->readPages();
                return file;
            }
        }
    } catch (const QPDFExc& error) {
        return tl::unexpected<Refusal>(
            Refusal{Refusal::Why::NotPdf, false, "cannot be read: " + error.getMessageDetail()});
    }
    return tl::unexpected<Refusal>(
        Refusal{Refusal::Why::PasswordNeeded, false,
                passwords.empty() ? "is encrypted and needs a password"
                                  : "is encrypted, and none of the passwords opens it"});
}

bool PdfFile::tryPassword(const std::string& password)
{
    qpdf_ = std::make_unique<QPDF>();
    qpdf_->setSuppressWarnings(true);
    try {
        qpdf_->processMemoryFile("", bytes_.data(), bytes_.size(), password.c_str());
    } catch (const QPDFExc& error) {
        if (error.getErrorCode() != qpdf_e_password) {
            throw;
        }
        return false;
    }
    password_ = password;
    return true;
}

// Trees may be as deep as there are pages, and a kid may be a node above it.
void PdfFile::readPages()
{
    std::vector<Page> open = {Page{valueOf(catalog(), "/Pages"), {}}};
    while (!open.empty()) {
        Page node = std::move(open.back());
        open.pop_back();
        if (!node.object.isDictionary()) {
            unreadable_.push_back(static_cast<int>(pages_.size() + unreadable_.size()) + 1);
            continue;
        }
        for (std::size_t i = 0; i < inheritedCount; ++i) {
            if (QPDFObjectHandle own = node.object.getKey(inheritedKeys[i]); !own.isNull()) {
                node.inherited[i] = own;
            }
        }
        QPDFObjectHandle kids = node.object.getKey("/Kids");
        if (!kids.isArray()) {
            if (node.object.isIndirect()) {
                places_[node.object.getObjGen()].push_back(static_cast<int>(pages_.size()));
            }
            pages_.push_back(std::move(node));
            continue;
        }
        if (node.object.isIndirect() && !nodes_.insert(node.object.getObjGen()).second) {
            continue;
        }
        const std::vector<QPDFObjectHandle> list = kids.getArrayAsVector();
        for (auto kid = list.rbegin(); kid != list.rend(); ++kid) {
            open.push_back(node);
            open.back().object = *kid;
        }
    }
}

const std::vector<int>& PdfFile::placesOf(QPDFObjectHandle object) const
{
    static const std::vector<int> none;
    const auto found = object.isInitialized() && object.isIndirect()
                           ? places_.find(object.getObjGen())
                           : places_.end();
    return found == places_.end() ? none : found->second;
}

QPDFObjectHandle valueOf(QPDFObjectHandle holder, const char* key)
{
    if (!holder.isInitialized()) {
        return QPDFObjectHandle::newNull();
    }
    if (holder.isStream()) {
        holder = holder.getDict();
    }
    return holder.isDictionary() ? holder.getKey(key) : QPDFObjectHandle::newNull();
}

bool isNamed(const QPDFObjectHandle& holder, const char* key, const char* name)
{
    QPDFObjectHandle value = valueOf(holder, key);
    return value.isName() && value.getName() == name;
}

std::string numberText(QPDFObjGen object)
{
    return object.isIndirect()
               ? std::to_string(object.getObj()) + " " + std::to_string(object.getGen()) + " R"
               : "a direct object";
}

std::vector<TreeEntry> treeEntries(const QPDFObjectHandle& root, const char* leafKey)
{
    std::vector<TreeEntry> entries;
    std::set<QPDFObjGen> seen;
    std::vector<QPDFObjectHandle> open = {root};
    while (!open.empty()) {
        QPDFObjectHandle node = open.back();
        open.pop_back();
        if (!node.isInitialized() || !node.isDictionary() ||
            (node.isIndirect() && !seen.insert(node.getObjGen()).second)) {
            continue;
        }
        if (QPDFObjectHandle leaf = node.getKey(leafKey); leaf.isArray()) {
            const std::vector<QPDFObjectHandle> items = leaf.getArrayAsVector();
            for (std::size_t i = 0; i + 1 < items.size(); i += 2) {
                entries.emplace_back(items[i], items[i + 1]);
            }
        }
        if (QPDFObjectHandle kids = node.getKey("/Kids"); kids.isArray()) {
            const std::vector<QPDFObjectHandle> list = kids.getArrayAsVector();
            open.insert(open.end(), list.rbegin(), list.rend());
        }
    }
    return entries;
}

namespace {

std::string textOf(const std::shared_ptr<Buffer>& buffer)
{
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

} // namespace

std::string rawDataOf(QPDFObjectHandle stream)
{
    try {
        return textOf(stream.getRawStreamData());
    } catch (const std::runtime_error&) { // of which libqpdf's exceptions are
        return {};
    }
}

StreamData dataOf(QPDFObjectHandle stream)
{
    try {
        return {textOf(stream.getStreamData(qpdf_dl_specialized)), true};
    } catch (const std::runtime_error&) {
        return {rawDataOf(stream), false};
    }
}

} // namespace vantora::verification
