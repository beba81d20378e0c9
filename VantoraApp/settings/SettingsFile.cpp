#include "VantoraApp/settings/SettingsFile.h"

#include "VantoraApp/settings/IniText.h"
#include "VantoraApp/settings/IniWriting.h"
#include "VantoraApp/settings/StoredText.h"
#include "VantoraApp/settings/StoredVariant.h"
#include "VantoraApp/settings/WholeFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

/// The key by which QSettings knows a value.
QString PlainKey(const QString& key)
{
    return key.split('/', Qt::SkipEmptyParts).join('/');
}

SettingsWriting Refused(const QVariantMap& values)
{
    return {false, values.keys()};
}

/// Writes the text before with these values.
SettingsWriting WriteWith(const IniText& before, const QString& path, const QVariantMap& values,
                          std::optional<QFile::Permissions> permissions = std::nullopt)
{
    SettingsWriting result;
    QMap<QString, QByteArray> lines;
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const QString key = PlainKey(value.key());
        QStringList refused;
        const QStringList texts = StoredTexts(KeepableVariant(value.value(), value.key(), refused));
        const bool isRefused =
            refused.contains(value.key()) || key.isEmpty() || !ValueOfStoredTexts(texts, nullptr);
        if (isRefused)
            refused = QStringList(value.key());
        else
            lines.insert(key, IniValue(texts));
        result.refused += refused;
    }
    const IniText after(before.with(lines));
    // A text that is damaged at its end, by an open quote for example, would swallow the new lines.
    for (auto line = lines.cbegin(); line != lines.cend(); ++line) {
        if (after.values().value(line.key()) != ReadIniValue(line.value()))
            return Refused(values);
    }
    if (after.bytes().size() > SettingsFile::maximumSize)
        return Refused(values);
    result.isWritten = WriteWholeFile(path, after.bytes(), permissions);
    return result;
}

} // namespace

tl::expected<SettingsFile, QString> SettingsFile::Read(const QString& path)
{
    const auto bytes = ReadWholeFile(path, maximumSize);
    if (!bytes)
        return tl::unexpected<QString>(bytes.error());
    return SettingsFile(IniText(*bytes).values());
}

bool SettingsFile::Contains(const QString& key) const
{
    return values_.contains(PlainKey(key));
}

std::optional<QVariant> SettingsFile::Value(const QString& key, QStringList* refused) const
{
    const auto found = values_.constFind(PlainKey(key));
    if (found == values_.constEnd())
        return std::nullopt;
    QStringList within;
    const auto value = ValueOfStoredTexts(*found, &within);
    if (refused != nullptr) {
        for (const QString& name : within)
            refused->append(key + '/' + name);
        if (!value)
            refused->append(key);
    }
    return value;
}

SettingsWriting WriteSettingsFile(const QString& path, const QVariantMap& values)
{
    return WriteWith(IniText({}), path, values);
}

SettingsWriting WriteNamedSettingsFile(const QString& path, const QVariantMap& values)
{
    const QFileInfo before(path);
    if (!before.exists())
        return WriteSettingsFile(before.isSymLink() ? before.symLinkTarget() : path, values);
    return WriteWith(IniText({}), before.canonicalFilePath(), values, before.permissions());
}

SettingsWriting UpdateSettingsFile(const QString& path, const QVariantMap& values)
{
    const QFileInfo before(path);
    if (!before.exists() && !before.isSymLink())
        return WriteSettingsFile(path, values);
    const auto bytes = ReadWholeFile(path, SettingsFile::maximumSize);
    if (!bytes)
        return {};
    return WriteWith(IniText(*bytes), before.canonicalFilePath(), values, before.permissions());
}

bool RemoveFromSettingsFile(const QString& path, const QStringList& keys)
{
    const QFileInfo before(path);
    const auto bytes = ReadWholeFile(path, SettingsFile::maximumSize);
    return bytes && WriteWholeFile(before.canonicalFilePath(), IniText(*bytes).without(keys),
                                   before.permissions());
}
