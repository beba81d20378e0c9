#pragma once

#include <libxml/tree.h>

namespace karvel::xmp {

/// Gives back what libxml2 has allocated; a deleter for std::unique_ptr.
struct FreeXml {
    void operator()(xmlDoc* tree) const { xmlFreeDoc(tree); }
    void operator()(xmlChar* text) const { xmlFree(text); }
    void operator()(xmlBuffer* buffer) const { xmlBufferFree(buffer); }
};

} // namespace karvel::xmp
