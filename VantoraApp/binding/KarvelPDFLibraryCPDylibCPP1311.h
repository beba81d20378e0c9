#pragma once

#include "VantoraApp/binding/Shared.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace binding {
enum class Function : int;
}

/// One instance of the PDF library, loaded at run time, with a member for each of its functions.
///
/// A binding is loaded or failed from its construction to its destruction; there is no retry. On a
/// failed binding every operation does nothing and returns 0, 0.0 or an empty string. Failures of a
/// single operation are its result, explained by LastErrorCode and LastErrorText.
///
/// The binding owns the loaded library and the instance, and releases both at its end. Strings are
/// returned as copies. It is used by one thread at a time and handed on by pointer.
///
/// Host and plug-ins hand objects of it to each other, whatever their builds, so that the order of
/// its fields is part of the interface between them.
class VANTORA_SHARED KarvelPDFLibraryCPDylibCPP1311 {
public:
    /// Loads the library at `libraryPath`, finds all its functions and creates an instance. Only
    /// the low 8 bits of each character of the path are used; a bare file name is left to the
    /// system's library search. Throws nothing for a library that is missing or incomplete:
    /// LibraryLoaded tells.
    explicit KarvelPDFLibraryCPDylibCPP1311(const std::wstring& libraryPath);
    ~KarvelPDFLibraryCPDylibCPP1311();

    KarvelPDFLibraryCPDylibCPP1311(const KarvelPDFLibraryCPDylibCPP1311&) = delete;
    KarvelPDFLibraryCPDylibCPP1311& operator=(const KarvelPDFLibraryCPDylibCPP1311&) = delete;

    /// Whether the library was opened and every function found in it.
    bool LibraryLoaded() const;

    /// The address of an export of the library, null when it has none of that name; the binding
    /// then counts as failed unless the export is `optional`.
    void* AttachFunction(const char* name, bool optional);

    /// A buffer of the library with the text's code units; null for an empty text and on a failed
    /// binding. The function that it is passed to takes it over. Throws std::length_error when the
    /// text's bytes cannot be counted by an int.
    const wchar_t* WideStringParm(const std::wstring& text);

    /// The text's own characters, or, when it holds a NUL byte, a buffer of the library with its
    /// bytes, which the caller has to release after the call: `bufferUsed` is then 1, else 0.
    /// Throws std::length_error when such a text's bytes cannot be counted by an int.
    const char* StringParm(const std::string& text, int& bufferUsed);

    /// The `length` code units at `text`; empty when there are none.
    std::wstring WideStringResult(wchar_t* text, int length);

#include "VantoraApp/binding/operations.h"

private:
    template <std::size_t Count>
    class ReleasedBuffers;
    class Layout;

    void bindFunctions();

    template <class Signature>
    Signature* function(binding::Function function) const;
    template <class Result, class... Arguments>
    Result forward(binding::Function function, const Arguments&... arguments);
    template <class Result, class Raw>
    Result copied(Raw raw);

    void* libraryHandle = nullptr;
    std::int32_t instanceID = 0;
    bool loadFailed = false;
    void* functionTable[boundFunctions] = {};
};
