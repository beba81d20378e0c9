#pragma once

#include <functional>
#include <memory>
#include <qpdf/QPDF.hh>

namespace karvel::io {

/// A file's objects as libqpdf has them. libqpdf reads the file's cross-reference data when it
/// opens it, so it is opened only when its objects are first asked for.
class ObjectFile {
public:
    /// Opens the file that it is given, which says nothing about warnings by itself. May throw;
    /// whoever asks then gets the exception, and the next one another attempt.
    using Opener = std::function<void(QPDF&)>;

    /// Objects of no file so far, or of a new document.
    ObjectFile() : file_(quietFile()) {}

    ObjectFile(const ObjectFile&) = delete;
    ObjectFile& operator=(const ObjectFile&) = delete;

    void openWhenNeeded(Opener opener) { opener_ = std::move(opener); }

    bool isOpen() const { return !opener_; }

    QPDF& get()
    {
        if (opener_) {
            file_ = quietFile();
            opener_(*file_);
            opener_ = nullptr;
        }
        return *file_;
    }

    /// Only what is known to be open to everybody is opened late.
    bool isEncrypted() const { return isOpen() && file_->isEncrypted(); }

private:
    static std::unique_ptr<QPDF> quietFile()
    {
        auto file = std::make_unique<QPDF>();
        file->setSuppressWarnings(true); // they are collected and read from the file
        return file;
    }

    std::unique_ptr<QPDF> file_;
    Opener opener_;
};

} // namespace karvel::io
