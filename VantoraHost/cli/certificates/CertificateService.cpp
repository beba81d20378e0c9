#include "VantoraHost/cli/certificates/CertificateService.h"

#include "VantoraHost/cli/certificates/CertificateDrawing.h"
#include "VantoraHost/cli/certificates/CertificateMessages.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/core/workers/FileAccess.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>

#include <clocale>
#include <new>

namespace vantora::cli {

namespace {

// As much as a long certificate with the fonts of all scripts takes, several times over.
constexpr std::uint64_t memoryLimit = 1024ULL * 1024 * 1024;

Result<std::string> answerTo(const std::string& order)
{
    const auto removal = certificateOrderOf(order);
    if (!removal) {
        return tl::unexpected<Error>(noSense());
    }
    try {
        return certificatePdf(*removal);
    } catch (const std::bad_alloc&) {
        return fail(Reason::OutOfMemory, {}, "there is not enough memory for it");
    }
}

} // namespace

bool drawCertificates(const WorkerChannel& channel)
{
    giveUpPrivileges();
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int argumentCount = 3;
    char name[] = "vantora";
    char option[] = "-platform";
    char platform[] = "offscreen";
    char* arguments[] = {name, option, platform, nullptr};
    const QGuiApplication application(argumentCount, arguments);
    std::setlocale(LC_NUMERIC, "C"); // the application has taken over the user's
    confine(memoryLimit, {programFiles({}), {}});
    WorkerSide side(channel);
    const bool hasFonts = !QFontDatabase().families().isEmpty();
    while (const auto order = side.nextLine()) {
        const Result<std::string> pdf =
            hasFonts ? answerTo(*order)
                     : fail(Reason::LibraryFailed, {},
                            "there is no font to write it with; install one, such as those of the "
                            "package fonts-dejavu-core");
        if (!side.write(certificateAnswer(pdf) + '\n')) {
            return false;
        }
    }
    return true;
}

} // namespace vantora::cli
