#include <gmock/gmock.h>

#include <cstdlib>

// fontconfig keeps what it read as offsets instead of pointers, which a leak check cannot follow;
// Qt's platform plug-in for tests leaves its screen behind, here where commands start windows.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:libqoffscreen\nleak:QScreen::QScreen\n"
           "leak:QWindowSystemInterface::\nleak:QPlatformScreen::QPlatformScreen\n";
}

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    setenv("XDG_CONFIG_HOME", "/nonexistent", 1); // no test reads the developer's own
    return RUN_ALL_TESTS();
}
