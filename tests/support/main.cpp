#include <gmock/gmock.h>

// fontconfig keeps what it read as offsets instead of pointers, which a leak check cannot follow.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
