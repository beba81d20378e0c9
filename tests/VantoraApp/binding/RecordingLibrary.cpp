#include "RecordedCall.h"

#include <algorithm>
#include <memory>

Recording* recording()
{
    static Recording record;
    return &record;
}

std::string described(int value)
{
    return std::to_string(value);
}

std::string described(double value)
{
    return std::to_string(value);
}

std::string described(const wchar_t* argument)
{
    if (argument == nullptr) {
        return "null";
    }
    const auto found = recording()->buffers.find(argument);
    if (found == recording()->buffers.end()) {
        return "not a buffer";
    }
    const std::string& bytes = found->second.bytes;
    std::u32string units(bytes.size() / 4, U'\0');
    bytes.copy(reinterpret_cast<char*>(units.data()), units.size() * 4);
    return found->second.name + " wide " + written<char32_t>(units);
}

std::string described(const char* argument)
{
    if (argument == nullptr) {
        return "null";
    }
    const auto found = recording()->buffers.find(argument);
    if (found == recording()->buffers.end()) {
        return "text " + written<char>(argument);
    }
    return found->second.name + " bytes " + written<char>(found->second.bytes);
}

void note(const std::string& call)
{
    Recording& record = *recording();
    std::fill(record.wideResult.begin(), record.wideResult.end(), L'?');
    std::fill(record.byteResult.begin(), record.byteResult.end(), '?');
    record.calls.push_back(call);
}

namespace {

template <class Answer>
std::optional<Answer> next(std::map<std::string, std::list<Answer>>& answers, const char* name)
{
    const auto found = answers.find(name);
    if (found == answers.end() || found->second.empty()) {
        return std::nullopt;
    }
    const Answer answer = found->second.front();
    found->second.pop_front();
    return answer;
}

} // namespace

std::optional<int> nextAnswer(const char* name)
{
    return next(recording()->answers, name);
}

std::optional<std::wstring> nextText(const char* name)
{
    return next(recording()->texts, name);
}

RECORDED int KPLCreateLibrary()
{
    note("CreateLibrary()");
    return recording()->instance;
}

RECORDED int KPLReleaseLibrary(int instance)
{
    note("ReleaseLibrary(" + std::to_string(instance) + ")");
    return 1;
}

RECORDED char* KPLCreateBuffer(int instance, int byteSize)
{
    note("CreateBuffer(" + std::to_string(instance) + ", " + std::to_string(byteSize) + ")");
    Recording& record = *recording();
    record.storage.emplace_back(static_cast<std::size_t>(std::max(byteSize, 1)), '#');
    char* address = record.storage.back().data();
    record.buffers[address] = {"b" + std::to_string(record.storage.size()), {}};
    return address;
}

RECORDED int KPLAddToBuffer(int instance, char* buffer, const char* source, int byteCount)
{
    Recording::Buffer& target = recording()->buffers.at(buffer);
    note("AddToBuffer(" + std::to_string(instance) + ", " + target.name + ", " +
         std::to_string(byteCount) + ")");
    target.bytes.append(source, static_cast<std::size_t>(byteCount));
    return 1;
}

RECORDED int KPLReleaseBuffer(int instance, char* buffer)
{
    Recording& record = *recording();
    const auto found = record.buffers.find(buffer);
    note("ReleaseBuffer(" + std::to_string(instance) + ", " +
         (found == record.buffers.end() ? "not a buffer" : found->second.name) + ")");
    record.buffers.erase(buffer);
    return 1;
}

RECORDED int KPLStringResultLength(int instance)
{
    Recording& record = *recording();
    record.calls.push_back("StringResultLength(" + std::to_string(instance) + ")");
    return record.reportedLength.value_or(static_cast<int>(record.wideResult.size()));
}

RECORDED int KPLAnsiStringResultLength(int instance)
{
    Recording& record = *recording();
    record.calls.push_back("AnsiStringResultLength(" + std::to_string(instance) + ")");
    return record.reportedLength.value_or(static_cast<int>(record.byteResult.size()));
}
