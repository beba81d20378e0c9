#include "tests/support/FakeOpenGL.h"

#include "VantoraApp/CUtils.h"

bool hasOpenGL = false;

bool CUtils::CheckOpenGLSupport()
{
    return hasOpenGL;
}
