#include "VantoraApp/settings/SettingsFile.h"

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cstdlib>
#include <iostream>

namespace {

void require(bool holds, const char* law)
{
    if (!holds) {
        std::cerr << "broken: " << law << '\n';
        std::abort();
    }
}

QByteArray bytesOf(const QVariant& value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return bytes;
}

// Numbers that are none differ from themselves, and so does what holds one.
bool same(const std::optional<QVariant>& one, const std::optional<QVariant>& other)
{
    return one == other || (one && other && bytesOf(*one) == bytesOf(*other));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/fuzz-settings-XXXXXX"));
    const QString path = folder.filePath(QStringLiteral("settings.ini"));
    {
        QFile file(path);
        require(file.open(QIODevice::WriteOnly) &&
                    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) ==
                        static_cast<qint64>(size),
                "the file of the input can be written");
    }
    const auto before = SettingsFile::Read(path);
    if (!before) {
        return 0;
    }
    for (const QString& key : before->Keys()) {
        before->Value(key);
    }
    const QString added = QStringLiteral("AddedByTheTest");
    const bool isAdded =
        UpdateSettingsFile(path, {{added, 7}}).isWritten; // not to every damaged text
    const auto after = SettingsFile::Read(path);
    require(after.has_value(), "the file can be read again");
    require(!isAdded || after->Value(added) == QVariant(7), "what was added is read back");
    for (const QString& key : before->Keys()) {
        require((isAdded && key == added) || same(after->Value(key), before->Value(key)),
                "all else stays as it is");
    }
    return 0;
}
