#include "KarvelPDFLibrary/content/PaintedContent.h"

#include "KarvelPDFLibrary/content/PageContent.h"
#include "KarvelPDFLibrary/index/BoundedData.h"

#include <cmath>
#include <qpdf/BufferInputSource.hh>
#include <qpdf/QPDFTokenizer.hh>
#include <string>

namespace karvel::content {

namespace {

using Matrix = std::array<double, 6>;
using Type = QPDFTokenizer::token_type_e;

Matrix product(const Matrix& first, const Matrix& then)
{
    return {first[0] * then[0] + first[1] * then[2],
            first[0] * then[1] + first[1] * then[3],
            first[2] * then[0] + first[3] * then[2],
            first[2] * then[1] + first[3] * then[3],
            first[4] * then[0] + first[5] * then[2] + then[4],
            first[4] * then[1] + first[5] * then[3] + then[5]};
}

/// Forms in forms in forms: hostile ones refer to each other.
constexpr int deepestForm = 6;
constexpr int mostForms = 200;
constexpr std::size_t mostOfForm = 64U * 1024 * 1024;

/// A picture of what is behind it is hardly told apart from marks: nobody needs more images.
constexpr std::size_t mostImages = 1000;

class Reader {
public:
    explicit Reader(PaintedContent& painted) : painted_(painted) {}

    void read(const std::string& content, QPDFObjectHandle resources, const Matrix& matrix,
              int depth)
    {
        const std::vector<State> outer = std::move(states_);
        states_ = {{matrix, outer.empty() ? 0 : outer.back().textMode}};
        const auto input = std::make_shared<BufferInputSource>("content", content);
        QPDFTokenizer tokenizer;
        tokenizer.allowEOF();
        operands_.clear();
        while (!isDone_) {
            const QPDFTokenizer::Token token = tokenizer.readToken(input, "content", true);
            const Type type = token.getType();
            if (type == Type::tt_eof) {
                break;
            }
            if (type == Type::tt_bad) {
                stop();
            } else if (type == Type::tt_word) {
                if (token.getValue() == "ID") {
                    tokenizer.expectInlineImage(input);
                    paint(QPDFObjectHandle::newNull());
                } else {
                    apply(token.getValue(), resources, depth);
                }
                operands_.clear();
            } else if (operands_.size() < 64) {
                operands_.push_back(token);
            }
        }
        states_ = outer;
    }

private:
    struct State {
        Matrix matrix;
        int textMode = 0;
    };

    void apply(const std::string& word, QPDFObjectHandle resources, int depth)
    {
        if (word == "q") {
            constexpr std::size_t deepest = 1000;
            if (states_.size() < deepest) {
                states_.push_back(states_.back());
            } else {
                stop();
            }
        } else if (word == "Q") {
            if (states_.size() > 1) {
                states_.pop_back();
            }
        } else if (word == "cm") {
            Matrix matrix;
            for (std::size_t i = 0; i < 6; ++i) {
                matrix[i] = number(i, 6);
            }
            states_.back().matrix = product(matrix, states_.back().matrix);
        } else if (word == "Tr") {
            states_.back().textMode = static_cast<int>(number(0, 1));
        } else if (word == "Tj" || word == "TJ" || word == "'" || word == "\"") {
            constexpr int invisible = 3;
            if (states_.back().textMode != invisible) {
                stop();
            }
        } else if (word == "Do") {
            draw(resources, depth);
        } else if (word == "W" || word == "W*" || word == "BDC") {
            const bool isHarmless =
                word == "BDC" && !operands_.empty() && operands_.front().getValue() != "/OC";
            painted_.altersImages = painted_.altersImages || !isHarmless;
        } else if (word == "gs") {
            painted_.altersImages = painted_.altersImages || mixes(named(resources, "/ExtGState"));
        } else {
            paintPath(word);
        }
    }

    void paintPath(const std::string& word)
    {
        for (const char* painting : {"f", "F", "f*", "S", "s", "B", "B*", "b", "b*", "sh"}) {
            painted_.paintsMore = painted_.paintsMore || word == painting;
        }
    }

    /// What the last operand names among the resources of a kind.
    QPDFObjectHandle named(QPDFObjectHandle resources, const char* kind) const
    {
        const std::string name = operands_.empty() ? "" : operands_.back().getValue();
        QPDFObjectHandle objects = resources.isDictionary() ? resources.getKey(kind) : resources;
        return objects.isDictionary() ? objects.getKey(name) : QPDFObjectHandle::newNull();
    }

    /// Whether a graphics state mixes what is drawn with what is there.
    static bool mixes(QPDFObjectHandle state)
    {
        if (!state.isDictionary()) {
            return false;
        }
        QPDFObjectHandle mask = state.getKey("/SMask");
        QPDFObjectHandle mode = state.getKey("/BM");
        QPDFObjectHandle opacity = state.getKey("/ca");
        return !(mask.isNull() || mask.isNameAndEquals("/None")) ||
               !(mode.isNull() || mode.isNameAndEquals("/Normal")) ||
               (opacity.isNumber() && opacity.getNumericValue() < 1);
    }

    void draw(QPDFObjectHandle resources, int depth)
    {
        QPDFObjectHandle object = named(resources, "/XObject");
        if (!object.isStream()) {
            return; // nothing is drawn
        }
        QPDFObjectHandle dictionary = object.getDict();
        painted_.altersImages = painted_.altersImages || dictionary.hasKey("/OC");
        if (dictionary.getKey("/Subtype").isNameAndEquals("/Image")) {
            paint(object);
        } else if (depth >= deepestForm || ++forms_ > mostForms) {
            stop();
        } else {
            const std::size_t before = painted_.images.size();
            QPDFObjectHandle own = dictionary.getKey("/Resources");
            const Matrix outer = states_.back().matrix;
            read(index::boundedData(object, mostOfForm), own.isDictionary() ? own : resources,
                 product(matrixOf(dictionary.getKey("/Matrix")), outer), depth + 1);
            painted_.altersImages = painted_.altersImages || painted_.images.size() > before;
        }
    }

    static Matrix matrixOf(QPDFObjectHandle array)
    {
        Matrix matrix = {1, 0, 0, 1, 0, 0};
        if (array.isArray() && array.getArrayNItems() == 6) {
            for (int i = 0; i < 6; ++i) {
                QPDFObjectHandle item = array.getArrayItem(i);
                matrix[static_cast<std::size_t>(i)] = item.isNumber() ? item.getNumericValue() : 0;
            }
        }
        return matrix;
    }

    void paint(QPDFObjectHandle image)
    {
        if (painted_.images.size() >= mostImages) {
            stop();
        } else {
            painted_.images.push_back({image, states_.back().matrix});
        }
    }

    double number(std::size_t index, std::size_t count) const
    {
        if (operands_.size() < count) {
            return 0;
        }
        const std::string& text = operands_[operands_.size() - count + index].getValue();
        return std::strtod(text.c_str(), nullptr);
    }

    void stop()
    {
        painted_.paintsMore = true;
        isDone_ = true;
    }

    PaintedContent& painted_;
    std::vector<State> states_;
    std::vector<QPDFTokenizer::Token> operands_;
    int forms_ = 0;
    bool isDone_ = false;
};

} // namespace

double PaintedImage::area() const
{
    return std::abs(placement[0] * placement[3] - placement[1] * placement[2]);
}

PaintedContent paintedContent(Document& document, int page)
{
    PaintedContent painted;
    try {
        QPDFObjectHandle annotations = document.page(page).getKey("/Annots");
        painted.paintsMore = annotations.isArray() && annotations.getArrayNItems() > 0;
        const Result<std::string> content = pageContent(document, page);
        if (content) {
            Reader(painted).read(*content, document.pageAttribute(page, "/Resources"),
                                 {1, 0, 0, 1, 0, 0}, 0);
        } else {
            painted.paintsMore = true;
        }
    } catch (...) {
        painted.paintsMore = true; // whoever renders it will see
    }
    return painted;
}

} // namespace karvel::content
