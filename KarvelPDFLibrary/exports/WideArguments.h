#pragma once

#include <initializer_list>

namespace karvel::boundary {

/// Frees the buffers of wide string arguments whose values nobody needs: callers of the interface
/// do not release those. What is no buffer of the instance is left alone.
void freeWide(int instance, std::initializer_list<const wchar_t*> arguments) noexcept;

} // namespace karvel::boundary
