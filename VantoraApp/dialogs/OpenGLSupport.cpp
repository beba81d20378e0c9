#include "VantoraApp/CUtils.h"
#include "VantoraApp/dialogs/OpenGLVersions.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QOpenGLContext>
#include <QtGui/QWindow>
#include <QtOpenGL/QGLFormat>

namespace {

/// Whether the platform has OpenGL at all: QGLFormat uses a context without looking whether there
/// is one, and crashes on platforms that have none.
bool CanMakeContextCurrent()
{
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return false;
    QOpenGLContext context;
    if (!context.create())
        return false;
    QWindow window;
    window.setSurfaceType(QSurface::OpenGLSurface);
    window.setGeometry(0, 0, 3, 3);
    window.create();
    return context.makeCurrent(&window);
}

} // namespace

bool CUtils::CheckOpenGLSupport()
{
    static const bool hasOpenGL = CanMakeContextCurrent();
    const int versions = hasOpenGL ? static_cast<int>(QGLFormat::openGLVersionFlags()) : 0;
    return OpenGLVersionsSuffice(versions);
}
