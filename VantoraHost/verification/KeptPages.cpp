#include "VantoraHost/verification/Kept.h"
#include "VantoraHost/verification/Walk.h"

#include <algorithm>
#include <functional>

namespace vantora::verification {

namespace {

std::string numbersOf(QPDFObjectHandle array)
{
    std::string text;
    if (array.isArray()) {
        std::vector<double> numbers;
        for (const QPDFObjectHandle& item : array.getArrayAsVector()) {
            numbers.push_back(
                QPDFObjectHandle(item).isNumber() ? QPDFObjectHandle(item).getNumericValue() : 0);
        }
        if (numbers.size() == 4) { // any two opposite corners (ISO 32000-2, 7.9.5)
            if (numbers[0] > numbers[2]) {
                std::swap(numbers[0], numbers[2]);
            }
            if (numbers[1] > numbers[3]) {
                std::swap(numbers[1], numbers[3]);
            }
        }
        for (const double number : numbers) {
            text += std::to_string(number) + " ";
        }
    }
    return text;
}

double numberOr(QPDFObjectHandle value, double otherwise)
{
    return value.isInitialized() && value.isNumber() ? value.getNumericValue() : otherwise;
}

// What a page doesn't say has a value all the same (ISO 32000-2, table 31).
std::string sizeOf(const Page& page)
{
    QPDFObjectHandle crop = page.inherited[CropBox];
    const std::string media = page.inherited[MediaBox].isInitialized()
                                  ? numbersOf(page.inherited[MediaBox])
                                  : std::string();
    const int rotation = static_cast<int>(numberOr(page.inherited[Rotate], 0)) % 360;
    return media + "/" + (crop.isInitialized() && crop.isArray() ? numbersOf(crop) : media) + "/" +
           std::to_string((rotation + 360) % 360) + "/" +
           std::to_string(numberOr(valueOf(page.object, "/UserUnit"), 1));
}

struct ContentText {
    std::string bytes;
    bool decoded = true;
};

// Streams of a page's content are one, with white space between them.
ContentText contentOf(const Page& page)
{
    ContentText content;
    for (const QPDFObjectHandle& stream : contentsOf(page.object)) {
        StreamData data = dataOf(stream);
        content.decoded &= data.decoded;
        while (!data.bytes.empty() && static_cast<unsigned char>(data.bytes.back()) <= ' ') {
            data.bytes.pop_back();
        }
        content.bytes += data.bytes + "\n";
    }
    return content;
}

std::string rectOf(const QPDFObjectHandle& annotation)
{
    return numbersOf(valueOf(annotation, "/Rect"));
}

std::string described(const Target& target)
{
    return std::to_string(static_cast<int>(target.where)) + " " + std::to_string(target.place) +
           " " + target.more;
}

using Texts = std::vector<std::string>;

// What the first has that the second hasn't.
Texts missing(Texts expected, Texts present)
{
    Texts lost;
    std::sort(expected.begin(), expected.end());
    std::sort(present.begin(), present.end());
    std::set_difference(expected.begin(), expected.end(), present.begin(), present.end(),
                        std::back_inserter(lost));
    return lost;
}

bool hasGone(const Judgement& judgement, const QPDFObjectHandle& annotation)
{
    return judgement.goes(annotation) || judgement.goes(valueOf(annotation, "/IRT")) ||
           (isNamed(annotation, "/Subtype", "/Popup") &&
            judgement.goes(valueOf(annotation, "/Parent")));
}

class PageComparison {
public:
    PageComparison(const Both& both, int place, int placeAfter)
        : both_(both), number_(place + 1),
          before_(both.split.file().pages()[static_cast<std::size_t>(place)]),
          after_(both.after.pages()[static_cast<std::size_t>(placeAfter)])
    {
    }

    void compare()
    {
        compareContent();
        if (sizeOf(before_) != sizeOf(after_)) {
            find(Kind::KeptSize, "its boxes or its rotation have changed");
        }
        compareLinks();
        compareAnnotations();
    }

    void compareLabels(const std::string& before, const std::string& after)
    {
        if (before != after) {
            find(Kind::KeptLabel, "its label was " + quoted(before) + " and is " + quoted(after));
        }
    }

private:
    void find(Kind kind, const std::string& what)
    {
        both_.findings.add(kind, number_, numberText(QPDFObjectHandle(after_.object).getObjGen()),
                           what);
    }

    void compareContent()
    {
        const ContentText before = contentOf(before_);
        const ContentText after = contentOf(after_);
        if (before.bytes == after.bytes) {
            return;
        }
        if (before.decoded && after.decoded) {
            find(Kind::KeptContent, "its content has changed");
        } else {
            both_.findings.notTold("whether the content of page " + std::to_string(number_) +
                                   " is the same, which can't be decoded");
        }
    }

    void compareLinks()
    {
        Texts expected;
        Texts open; // places of links that had more to do than to lead to a removed page
        for (const QPDFObjectHandle& annotation : annotationsOf(before_.object)) {
            const Target target = both_.targets.of(annotation);
            if (target.where == Target::Where::Nowhere || hasGone(both_.judgement, annotation)) {
                continue;
            }
            if (!both_.split.leadsToRemoved(target)) {
                expected.push_back(rectOf(annotation) + described(both_.split.afterwards(target)));
            } else if (!valueOf(valueOf(annotation, "/A"), "/Next").isNull()) {
                open.push_back(rectOf(annotation));
            }
        }
        Texts present;
        for (const QPDFObjectHandle& annotation : annotationsOf(after_.object)) {
            const Target target = both_.targetsAfter.of(annotation);
            if (target.where != Target::Where::Nowhere &&
                std::find(open.begin(), open.end(), rectOf(annotation)) == open.end()) {
                present.push_back(rectOf(annotation) + described(target));
            }
        }
        if (const std::size_t lost = missing(expected, present).size(); lost > 0) {
            find(Kind::KeptLink, std::to_string(lost) + " links are gone or lead elsewhere");
        } else if (const std::size_t extra = missing(present, expected).size(); extra > 0) {
            find(Kind::Destination,
                 std::to_string(extra) +
                     " links lead to what is no page any more, or where none did");
        }
    }

    void compareAnnotations()
    {
        const auto textsOf = [&](const Page& page, bool isBefore) {
            Texts all;
            for (const QPDFObjectHandle& annotation : annotationsOf(page.object)) {
                QPDFObjectHandle type = valueOf(annotation, "/Subtype");
                QPDFObjectHandle text = valueOf(annotation, "/Contents");
                if (isNamed(annotation, "/Subtype", "/Link") ||
                    (isBefore && hasGone(both_.judgement, annotation))) {
                    continue;
                }
                all.push_back((type.isName() ? type.getName() : "") + " " + rectOf(annotation) +
                              (text.isString() ? text.getUTF8Value() : ""));
            }
            return all;
        };
        const Texts lost = missing(textsOf(before_, true), textsOf(after_, false));
        if (!lost.empty()) {
            find(Kind::KeptAnnotation, std::to_string(lost.size()) +
                                           " annotations are gone or changed, such as " +
                                           quoted(lost.front()));
        }
    }

    const Both& both_;
    int number_;
    const Page& before_;
    const Page& after_;
};

} // namespace

void compareKeptPages(const Both& both)
{
    const std::vector<PageLabel> before = labelsOf(both.split.file());
    const std::vector<PageLabel> after = labelsOf(both.after);
    int placeAfter = 0;
    for (const int place : both.split.kept()) {
        PageComparison page(both, place, placeAfter);
        page.compare();
        const auto at = static_cast<std::size_t>(placeAfter);
        const std::string number = std::to_string(placeAfter + 1);
        // Without labels viewers show numbers.
        page.compareLabels(before.empty() ? number : before[static_cast<std::size_t>(place)].text,
                           after.empty() ? number : after[at].text);
        ++placeAfter;
    }
}

} // namespace vantora::verification
