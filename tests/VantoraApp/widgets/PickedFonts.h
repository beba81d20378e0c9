#pragma once

#include "VantoraApp/CActionUtils.h"

#include <QtCore/QStringList>
#include <QtWidgets/QComboBox>

#include <dlfcn.h>
#include <gtest/gtest.h>

/// A library in this process under the name by which the picker asks for it: the loader gives the
/// one that is there.
class LoadedLibrary {
public:
    explicit LoadedLibrary(const char* path) : handle(dlopen(path, RTLD_NOW | RTLD_LOCAL))
    {
        if (handle == nullptr)
            ADD_FAILURE() << dlerror();
    }
    ~LoadedLibrary()
    {
        if (handle != nullptr)
            dlclose(handle);
    }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    void* find(const char* name) const { return dlsym(handle, name); }

private:
    void* handle;
};

/// The names that the picker lists.
inline QStringList pickedFonts()
{
    QComboBox box;
    box.addItem("before");
    CActionUtils::SetupSystemFontsComboBox(&box);
    QStringList all;
    for (int row = 0; row < box.count(); ++row)
        all.append(box.itemText(row));
    return all;
}
