#include "KarvelPDFLibrary/exports/Boundary.h"
#include "exports.h"

using namespace karvel;

int KPLCreateLibrary()
{
    try {
        return instances::create();
    } catch (...) {
        return 0;
    }
}

int KPLReleaseLibrary(int instance)
{
    return instances::release(instance) ? 1 : 0;
}

char* KPLCreateBuffer(int instance, int byteSize)
{
    const auto buffer = boundary::guarded(instance, [&](Instance& self) -> Result<char*> {
        char* created = self.buffers.create(byteSize);
        if (created == nullptr) {
            return fail(ErrorCode::BadArgument, "a buffer cannot have a negative size");
        }
        return created;
    });
    return buffer ? *buffer : nullptr;
}

int KPLAddToBuffer(int instance, char* buffer, const char* source, int byteCount)
{
    return boundary::integer(instance, [&](Instance& self) -> Outcome {
        if (!self.buffers.append(buffer, source, byteCount)) {
            return fail(ErrorCode::BadArgument,
                        "no such buffer, or more bytes than it was created for");
        }
        return {};
    });
}

int KPLReleaseBuffer(int instance, char* buffer)
{
    return boundary::integer(instance, [&](Instance& self) -> Outcome {
        if (!self.buffers.release(buffer)) {
            return fail(ErrorCode::NotFound, "no such buffer");
        }
        return {};
    });
}

int KPLStringResultLength(int instance)
{
    return boundary::integer(instance, [](Instance& self) -> Result<int> {
        return static_cast<int>(self.wideResult.size());
    });
}

int KPLAnsiStringResultLength(int instance)
{
    return boundary::integer(instance, [](Instance& self) -> Result<int> {
        return static_cast<int>(self.byteResult.size());
    });
}
