#include "KarvelPDFLibrary/saving/ObjectText.h"

#include "KarvelPDFLibrary/saving/EscapedNames.h"

namespace karvel::saving {

namespace {

class TextWriter {
public:
    TextWriter(QPDFObjGen owner, const Cipher* cipher, const Renumbering* numbers)
        : owner_(owner), cipher_(cipher), numbers_(numbers)
    {
    }

    void value(QPDFObjectHandle part, bool outermost)
    {
        if (part.isIndirect() && !outermost) {
            text_ += numbers_ != nullptr ? numbers_->reference(part) : part.unparse();
        } else if (part.isStream()) {
            stream(part);
        } else if (part.isDictionary()) {
            dictionary(part);
        } else if (part.isArray()) {
            text_ += '[';
            for (const QPDFObjectHandle& item : part.getArrayAsVector()) {
                text_ += ' ';
                value(item, false);
            }
            text_ += " ]";
        } else if (part.isName()) {
            text_ += nameText(part.getName());
        } else if (part.isString() && cipher_ != nullptr) {
            const std::string enciphered = cipher_->string(part.getStringValue(), owner_);
            text_ += QPDFObjectHandle::newString(enciphered).unparseBinary();
        } else {
            text_ += part.unparseResolved();
        }
    }

    std::string take() { return std::move(text_); }

private:
    void dictionary(QPDFObjectHandle part)
    {
        // A signature's contents are never enciphered (ISO 32000-2, 7.6.2).
        const bool signature = part.isDictionaryOfType("/Sig") && part.hasKey("/ByteRange");
        text_ += "<<";
        for (const auto& [key, entry] : part.getDictAsMap()) {
            QPDFObjectHandle item = entry;
            if (item.isNull() && !item.isIndirect()) {
                continue;
            }
            text_ += ' ' + nameText(key) + ' ';
            if (signature && key == "/Contents" && item.isString()) {
                text_ += item.unparseBinary();
            } else {
                value(item, false);
            }
        }
        text_ += " >>";
    }

    void stream(QPDFObjectHandle part)
    {
        const std::shared_ptr<Buffer> raw = part.getRawStreamData();
        std::string data(reinterpret_cast<const char*>(raw->getBuffer()), raw->getSize());
        if (cipher_ != nullptr) {
            data = cipher_->stream(data, owner_, part.getDict());
        }
        const auto length = static_cast<long long>(data.size());
        QPDFObjectHandle dictionaryPart = part.getDict().shallowCopy();
        QPDFObjectHandle before = dictionaryPart.getKey("/Length");
        const bool stays =
            numbers_ != nullptr && before.isInteger() && before.getIntValue() == length;
        if (!stays) {
            dictionaryPart.replaceKey("/Length", QPDFObjectHandle::newInteger(length));
        }
        dictionary(dictionaryPart);
        text_ += "\nstream\n" + data + "\nendstream";
    }

    QPDFObjGen owner_;
    const Cipher* cipher_;
    const Renumbering* numbers_;
    std::string text_;
};

} // namespace

std::string objectText(QPDFObjectHandle object, const Cipher* cipher, const Renumbering* numbers)
{
    QPDFObjGen owner = object.getObjGen();
    if (numbers != nullptr) {
        const std::uint32_t number = numbers->of(static_cast<std::uint32_t>(owner.getObj()));
        owner = QPDFObjGen(static_cast<int>(number), 0);
    }
    TextWriter writer(owner, cipher, numbers);
    writer.value(object, true);
    return writer.take();
}

std::string numbered(int object, int generation, const std::string& value)
{
    return std::to_string(object) + " " + std::to_string(generation) + " obj\n" + value +
           "\nendobj\n";
}

} // namespace karvel::saving
