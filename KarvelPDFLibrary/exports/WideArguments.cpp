#include "KarvelPDFLibrary/exports/WideArguments.h"

#include "KarvelPDFLibrary/instance/Instance.h"

namespace karvel::boundary {

void freeWide(int number, std::initializer_list<const wchar_t*> arguments) noexcept
{
    try {
        if (const std::shared_ptr<Instance> instance = instances::find(number)) {
            for (const wchar_t* argument : arguments) {
                instance->buffers.release(reinterpret_cast<const char*>(argument));
            }
        }
    } catch (...) {
        // There is nothing that could be freed.
    }
}

} // namespace karvel::boundary
