#include "KarvelPDFLibrary/diagnostics/CheckDocument.h"

#include "KarvelPDFLibrary/io/WindowedInput.h"
#include "KarvelPDFLibrary/saving/Snapshot.h"

#include <qpdf/Pl_Discard.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

namespace karvel::diagnostics {

namespace {

class IgnoreContent final : public QPDFObjectHandle::ParserCallbacks {
public:
    void handleObject(QPDFObjectHandle /*object*/, size_t /*offset*/, size_t /*length*/) override {}
    void handleEOF() override {}
};

/// Reads a file of its own, so that what the check does leaves the document's objects alone.
class Check {
public:
    Check(const std::shared_ptr<io::ByteSource>& source, const std::string& password)
    {
        file_.setSuppressWarnings(true); // they are counted
        file_.processInputSource(std::make_shared<io::WindowedInput>(source), password.c_str());
    }

    void structure()
    {
        guarded("cross-reference table", [&] { file_.fixDanglingReferences(); });
        guarded("linearization", [&] {
            if (file_.isLinearized()) {
                file_.checkLinearization();
            }
        });
        guarded("page tree", [&] { file_.getAllPages(); });
    }

    void streams()
    {
        for (QPDFObjectHandle object : file_.getAllObjects()) {
            if (!object.isStream()) {
                continue;
            }
            guarded("object " + std::to_string(object.getObjectID()), [&] {
                Pl_Discard nothing;
                object.pipeStreamData(&nothing, nullptr, 0, qpdf_dl_all, false, false);
            });
        }
    }

    void content()
    {
        int number = 0;
        for (const QPDFObjectHandle& page : file_.getAllPages()) {
            guarded("page " + std::to_string(++number), [&] {
                IgnoreContent callbacks;
                QPDFPageObjectHelper(page).parseContents(&callbacks);
            });
        }
    }

    Warnings problems()
    {
        for (const QPDFExc& warning : file_.getWarnings()) {
            problems_.emplace_back(warning.what());
        }
        return std::move(problems_);
    }

private:
    template <class Part>
    void guarded(const std::string& subject, Part&& part)
    {
        try {
            part();
        } catch (...) {
            problems_.push_back(currentExceptionAsError(subject).text);
        }
    }

    QPDF file_;
    Warnings problems_;
};

} // namespace

Result<int> checkDocument(Document& document, CheckLevel level)
{
    const Result<saving::Snapshot> now = saving::snapshot(document, saving::Encrypting::Never);
    if (!now) {
        return tl::unexpected<Error>(now.error());
    }
    try {
        Check check(now->source, now->password);
        check.structure();
        if (level >= CheckLevel::Streams) {
            check.streams();
        }
        if (level >= CheckLevel::Content) {
            check.content();
        }
        if (Outcome status = now->source->intact(); !status) {
            return tl::unexpected<Error>(status.error());
        }
        const Warnings problems = check.problems();
        Warnings& warnings = document.warnings();
        warnings.insert(warnings.end(), problems.begin(), problems.end());
        return static_cast<int>(problems.size());
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

} // namespace karvel::diagnostics
