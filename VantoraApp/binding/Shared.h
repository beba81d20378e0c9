#pragma once

/// Marks what the shared library of the action code exports: all else stays inside it.
#define VANTORA_SHARED __attribute__((visibility("default")))
