#include "BindingFixture.h"

#include <climits>
#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Outcome expectedOutcome(const ForwarderRow& row)
{
    const Outcome results[] = {integerResultOf(row.name), realResultOf(row.name),
                               wideResultOf(row.name), byteResultOf(row.name)};
    return results[static_cast<int>(row.result)];
}

/// The calls that one forwarder makes: buffers for its arguments from left to right, itself, the
/// length of a string result, the release of the byte strings' buffers.
class ExpectedCalls {
public:
    ExpectedCalls(const ForwarderRow& row, const ArgumentValues& values) : values_(values)
    {
        std::string call = row.name + "(7";
        for (std::size_t i = 0; i < row.arguments.size(); ++i) {
            call += ", " + argument(row.arguments[i], static_cast<int>(i) + 1);
        }
        calls.push_back(call + ")");
        if (row.result == Kind::wide) {
            calls.emplace_back("StringResultLength(7)");
        } else if (row.result == Kind::bytes) {
            calls.emplace_back("AnsiStringResultLength(7)");
        }
        calls.insert(calls.end(), releases_.begin(), releases_.end());
    }

    std::vector<std::string> calls;

private:
    std::string argument(Kind kind, int position)
    {
        switch (kind) {
        case Kind::integer:
            return std::to_string(ArgumentValues::integer(position));
        case Kind::real:
            return std::to_string(ArgumentValues::real(position));
        case Kind::wide: {
            const std::wstring text = values_.wide(position);
            return text.empty() ? "null"
                                : buffer(text.size() * 4) + " wide " + written<wchar_t>(text);
        }
        case Kind::bytes: {
            const std::string text = values_.bytes(position);
            if (text.find('\0') == std::string::npos) {
                return "text " + written<char>(text);
            }
            const std::string name = buffer(text.size());
            releases_.push_back("ReleaseBuffer(7, " + name + ")");
            return name + " bytes " + written<char>(text);
        }
        }
        return {};
    }

    std::string buffer(std::size_t size)
    {
        const std::string name = "b" + std::to_string(++buffers_);
        calls.push_back("CreateBuffer(7, " + std::to_string(size) + ")");
        calls.push_back("AddToBuffer(7, " + name + ", " + std::to_string(size) + ")");
        return name;
    }

    const ArgumentValues& values_;
    std::vector<std::string> releases_;
    int buffers_ = 0;
};

struct StringsCase {
    const char* sentence;
    ArgumentValues values;
};

const StringsCase stringsCases[] = {{"plain strings", {false, false}},
                                    {"byte strings with NUL bytes", {true, false}},
                                    {"empty strings", {false, true}}};

class Forwarders : public BindingTest {};

TEST_F(Forwarders, ReachTheirOwnExportsWithTheirOwnArguments)
{
    const auto binding = load();
    ASSERT_TRUE(binding->LibraryLoaded());
    for (const auto& [sentence, values] : stringsCases) {
        for (const ForwarderRow& row : forwarderRows()) {
            *record = Recording();
            const Outcome outcome = row.call(*binding, values);
            EXPECT_EQ(calls(), ExpectedCalls(row, values).calls) << row.name << ", " << sentence;
            EXPECT_EQ(outcome, expectedOutcome(row)) << row.name << ", " << sentence;
        }
    }
}

TEST(ForwarderRows, AreAllFunctionsOfTheList)
{
    std::set<std::string> names;
    for (const ForwarderRow& row : forwarderRows()) {
        names.insert(row.name);
    }
    EXPECT_EQ(names.size(), 852U);
}

class StringResults : public BindingTest {};

TEST_F(StringResults, HaveTheReportedLengthUnlessThatIsNoneOrTheyAreNull)
{
    const auto binding = load();
    for (const int length : {0, INT_MIN, 3}) {
        record->reportedLength = length;
        const std::size_t shown = length < 0 ? 0 : static_cast<std::size_t>(length);
        EXPECT_EQ(binding->LibraryVersion(), wideResultOf("LibraryVersion").substr(0, shown));
        EXPECT_EQ(binding->SaveToString(), byteResultOf("SaveToString").substr(0, shown));
    }
    record->nullResults = true;
    EXPECT_EQ(binding->LibraryVersion(), std::wstring());
    EXPECT_EQ(binding->SaveToString(), std::string());
}

class StringArguments : public BindingTest {};

TEST_F(StringArguments, KeepTheirNulCharactersByGoingThroughABuffer)
{
    const auto binding = load();
    calls();
    int bufferUsed = 1;
    const std::string text = "plain";
    EXPECT_EQ(binding->StringParm(text, bufferUsed), text.c_str());
    EXPECT_EQ(bufferUsed, 0);
    const char* pointer = binding->StringParm(std::string(1, '\0'), bufferUsed);
    EXPECT_EQ(bufferUsed, 1);
    EXPECT_EQ(record->buffers.at(pointer).bytes, std::string(1, '\0'));
    EXPECT_THAT(calls(), ElementsAre("CreateBuffer(7, 1)", "AddToBuffer(7, b1, 1)"));
    binding->GetCustomInformation(std::wstring(L"a\0b", 3));
    EXPECT_THAT(calls(),
                ElementsAre("CreateBuffer(7, 12)", "AddToBuffer(7, b2, 12)",
                            "GetCustomInformation(7, b2 wide \"a<0>b\")", "StringResultLength(7)"));
}

TEST_F(StringArguments, HaveTheirBuffersReleasedWhenTheCallEndsInAnException)
{
    const auto binding = load();
    calls();
    record->throws = true;
    const std::string nul(2, '\0');
    EXPECT_THROW(binding->StoreCustomData(nul, nul, 1), std::exception);
    EXPECT_THAT(calls(),
                ElementsAre("CreateBuffer(7, 2)", "AddToBuffer(7, b1, 2)", "CreateBuffer(7, 2)",
                            "AddToBuffer(7, b2, 2)",
                            "StoreCustomData(7, b1 bytes \"<0><0>\", b2 bytes \"<0><0>\", 1)",
                            "ReleaseBuffer(7, b1)", "ReleaseBuffer(7, b2)"));
}

} // namespace
