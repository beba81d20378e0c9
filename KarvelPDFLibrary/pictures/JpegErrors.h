#pragma once

#include <csetjmp>
#include <cstdio> // jpeglib.h needs it before
#include <jpeglib.h>

namespace karvel::pictures {

/// What libjpeg does at errors: silently it goes back to setjmp(escape) by longjmp, so that nothing
/// which is made between the two may need to be destroyed.
struct JpegErrors {
    jpeg_error_mgr manager = {}; // first, as libjpeg hands its address back
    std::jmp_buf escape = {};

    JpegErrors()
    {
        jpeg_std_error(&manager);
        manager.error_exit = leave;
        manager.output_message = [](j_common_ptr) {};
    }

    [[noreturn]] static void leave(j_common_ptr codec)
    {
        std::longjmp(reinterpret_cast<JpegErrors*>(codec->err)->escape, 1);
    }
};

} // namespace karvel::pictures
