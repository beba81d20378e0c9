#pragma once

#include "tests/support/Inspect.h"

#include <gtest/gtest.h>

#include <filesystem>

/// A test in a folder of its own, which is the current one meanwhile, so that files are named as
/// people name them.
class InOwnFolder : public testing::Test {
protected:
    InOwnFolder() { std::filesystem::current_path(scratch.path("")); }
    ~InOwnFolder() override { std::filesystem::current_path(before); }

    support::ScratchFolder scratch;

private:
    const std::filesystem::path before = std::filesystem::current_path();
};
