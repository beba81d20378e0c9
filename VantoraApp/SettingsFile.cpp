#include "VantoraApp/SettingsFile.h"

#include "VantoraApp/IniText.h"
#include "VantoraApp/StoredVariant.h"
#include "VantoraApp/WholeFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>

#include <cstring>
#include <limits>

namespace {

/// What stands between the parentheses of a value such as "@ByteArray(…)".
std::optional<QByteArray> BytesOf(const QString& text, const char* type)
{
    const QLatin1String opening(type);
    if (!text.startsWith(opening) || !text.endsWith(QLatin1Char(')')))
        return std::nullopt;
    return text.mid(opening.size(), text.size() - opening.size() - 1).toLatin1();
}

std::optional<QVariant> ValueOf(const QString& text)
{
    if (!text.startsWith(QLatin1Char('@')))
        return text;
    if (text.startsWith(QLatin1String("@@")))
        return text.mid(1);
    if (text == QLatin1String("@Invalid()"))
        return QVariant();
    if (const auto bytes = BytesOf(text, "@ByteArray("))
        return *bytes;
    if (const auto bytes = BytesOf(text, "@Variant("))
        return DecodeStoredVariant(*bytes);
    return std::nullopt;
}

/// The lines of an INI file with these values outside any group, as QSettings writes them.
std::optional<QByteArray> LinesOf(const QVariantMap& values)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("settings.ini");
    {
        QSettings settings(path, QSettings::IniFormat);
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            settings.setValue(value.key(), value.value());
        settings.sync();
        if (settings.status() != QSettings::NoError)
            return std::nullopt;
    }
    const auto text = ReadWholeFile(path, std::numeric_limits<int>::max());
    if (!text || !text->startsWith("[General]\n"))
        return std::nullopt;
    return text->mid(static_cast<int>(std::strlen("[General]\n")));
}

bool HoldsAll(const IniText& text, const QVariantMap& values)
{
    for (const QString& key : values.keys()) {
        if (!text.values().contains(key))
            return false;
    }
    return true;
}

bool WriteWith(const IniText& before, const QString& path, const QVariantMap& values,
               std::optional<QFile::Permissions> permissions = std::nullopt)
{
    const auto lines = LinesOf(values);
    if (!lines)
        return false;
    const IniText after(before.withLines(values.keys(), *lines));
    // A text that is damaged at its end, by an open quote for example, would swallow the new lines.
    return HoldsAll(after, values) && WriteWholeFile(path, after.bytes(), permissions);
}

} // namespace

tl::expected<SettingsFile, QString> SettingsFile::Read(const QString& path)
{
    const auto bytes = ReadWholeFile(path, maximumSize);
    if (!bytes)
        return tl::unexpected<QString>(bytes.error());
    return SettingsFile(IniText(*bytes).values());
}

std::optional<QVariant> SettingsFile::Value(const QString& key) const
{
    const auto found = mValues.constFind(key);
    if (found == mValues.constEnd())
        return std::nullopt;
    if (found->size() == 1)
        return ValueOf(found->first());

    QStringList texts;
    for (const QString& text : *found) {
        const std::optional<QVariant> value = ValueOf(text);
        if (!value || value->type() != QVariant::String)
            return std::nullopt;
        texts << value->toString();
    }
    return texts;
}

bool WriteSettingsFile(const QString& path, const QVariantMap& values)
{
    return WriteWith(IniText({}), path, values);
}

bool UpdateSettingsFile(const QString& path, const QVariantMap& values)
{
    const QFileInfo before(path);
    if (!before.exists() && !before.isSymLink())
        return WriteSettingsFile(path, values);
    const auto bytes = ReadWholeFile(path, SettingsFile::maximumSize);
    return bytes &&
           WriteWith(IniText(*bytes), before.canonicalFilePath(), values, before.permissions());
}

bool RemoveFromSettingsFile(const QString& path, const QStringList& keys)
{
    const QFileInfo before(path);
    const auto bytes = ReadWholeFile(path, SettingsFile::maximumSize);
    return bytes && WriteWholeFile(before.canonicalFilePath(), IniText(*bytes).withLines(keys, {}),
                                   before.permissions());
}
