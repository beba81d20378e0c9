#pragma once

/// Whether dialogs get a translucent background with these OpenGL versions, given as the bits of
/// QGLFormat::OpenGLVersionFlags. The bits of a version come with those of the earlier ones, so
/// that OpenGL 2.0 (63) suffices, 2.1 (127) and OpenGL ES 1 do not, and ES 2.0 (2048), OpenGL 3.0
/// and everything later do.
constexpr bool OpenGLVersionsSuffice(int flags)
{
    return flags >= 32 && (flags <= 64 || flags >= 2048);
}
