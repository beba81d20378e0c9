#include "VantoraHost/verification/Verification.h"

#include <dlfcn.h>

namespace vantora::verification {

const char* kindName(Kind kind)
{
    static constexpr const char* names[] = {
        "page-object",   "content-stream", "image",         "resource",          "text",
        "annotation",    "form-value",     "outline-title", "destination",       "name",
        "label-text",    "thumbnail",      "attachment",    "structure-element", "metadata",
        "private-data",  "page-count",     "kept-content",  "kept-text",         "kept-picture",
        "kept-size",     "kept-label",     "kept-link",     "kept-field",        "kept-annotation",
        "kept-document", "encryption"};
    return names[static_cast<std::size_t>(kind)];
}

tl::expected<const Verifier*, std::string> loadVerifier(const std::string& file)
{
    void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    const auto entry = module == nullptr
                           ? nullptr
                           : reinterpret_cast<VerifierEntry>(dlsym(module, verifierEntryName));
    if (entry == nullptr) {
        const char* reason = dlerror();
        return tl::unexpected<std::string>(reason == nullptr ? "no reason given" : reason);
    }
    return entry();
}

} // namespace vantora::verification
