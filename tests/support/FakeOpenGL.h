#pragma once

/// What CUtils::CheckOpenGLSupport answers in tests that are linked with FakeOpenGL.cpp.
extern bool hasOpenGL;
