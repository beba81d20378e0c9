#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <cstdarg>

/// The messages of a run for the user, in the order in which they were stored. Created by the
/// host and handed to the actions; takes no lock, so one thread at a time.
class VANTORA_SHARED CErrorHandler {
public:
    CErrorHandler() = default;
    virtual ~CErrorHandler();

    CErrorHandler(const CErrorHandler&) = delete;
    CErrorHandler& operator=(const CErrorHandler&) = delete;

    /// Formats a message printf-style (the format is taken as UTF-8) and stores it. A text that is
    /// not a format of the caller's own goes in as an argument of "%s".
    void Store(QString format, va_list arguments);

    /// The same with the arguments in place: StoreError("%d of %d", 3, 7).
    void StoreError(QString format, ...);

    /// The number of stored messages.
    long GetCount() const;

    /// The message at a 0-based index; "Unknown error" when there is none at that index.
    QString GetAt(long index) const;

    /// The message stored last; "Unknown error" when there is none.
    QString GetLast() const;

    /// Forgets the stored messages; the extra list keeps its own.
    void ClearAll();

    /// Every message stored from now on is appended to this list too. The list stays the caller's
    /// and must outlive its use here; null ends it.
    void SetExtraErrorList(QList<QString>* list) { mExtraErrorList = list; }

    /// Writes nothing: there is no persistent log.
    void WriteToLog(const char* text, bool flag);

private:
    class Layout;

    QList<QString> mErrorList;
    QList<QString>* mExtraErrorList = nullptr;
};
