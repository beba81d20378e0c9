#include "VantoraApp/settings/CActionHistoryAPI.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/errors/GuardedOperation.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraApp/settings/StoredName.h"

#include <QtGui/QIcon>
#include <QtGui/QImage>

#include <limits>
#include <memory>

namespace {

constexpr GuardedSite saveSite{"VantoraApp/CActionHistoryAPI", "SaveSettingsToHistory", 53};

constexpr int iconSize = 42;

/// The icon as it is stored, also where icons are drawn at more than one pixel a point.
QImage StoredIcon(const QIcon& icon)
{
    QImage image = icon.pixmap(QSize(iconSize, iconSize), QIcon::Normal, QIcon::Off).toImage();
    image.setDevicePixelRatio(1);
    if (image.width() > iconSize || image.height() > iconSize)
        image = image.scaled(iconSize, iconSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

} // namespace

CActionHistoryAPI::CActionHistoryAPI(QString prefix)
    : prefix_(std::move(prefix)), folder_(CActionUtils::GetCollectionsFolder())
{
    folder_.setNameFilters({prefix_ + "*"});
    files_ = folder_.entryInfoList(QDir::Files, QDir::Time | QDir::Reversed);
}

int CActionHistoryAPI::SaveSettingsToHistory(QMap<QString, QVariant>* prefs, QIcon* icon)
{
    return RunGuarded(
        saveSite,
        [prefs, icon] {
            const QString name = prefs->value("CollectionName").toString();
            if (!ReasonAgainstFavouriteName(name).isEmpty())
                return 1;
            const SettingsWriting written = WriteSettingsFile(
                FavouritePath(name), {{"ActionPrefs", *prefs}, {"ActionIcon", StoredIcon(*icon)}});
            return written.refused.isEmpty() ? 0 : 1;
        },
        [] { return 1; });
}

QMap<QString, QVariant>* CActionHistoryAPI::LoadSettingsFromHistory(int step)
{
    const qint64 position = static_cast<qint64>(cursor_) + step;
    cursor_ = static_cast<int>(
        qBound<qint64>(std::numeric_limits<int>::min(), position, std::numeric_limits<int>::max()));
    if (cursor_ < 0 || cursor_ >= files_.size())
        return nullptr;
    const QFileInfo& file = files_.at(files_.size() - 1 - cursor_);
    const auto settings = SettingsFile::Read(file.filePath());
    if (!settings)
        return nullptr;
    if (!settings->Contains("ActionPrefs"))
        return nullptr;
    const QVariant prefs = settings->Value("ActionPrefs").value_or(QVariant());
    return std::make_unique<QMap<QString, QVariant>>(prefs.toMap()).release();
}
