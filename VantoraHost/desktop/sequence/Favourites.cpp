#include "VantoraHost/desktop/sequence/Favourites.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraHost/core/actions/SavedSteps.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtGui/QImage>
#include <QtGui/QPixmap>

#include <algorithm>
#include <iterator>

namespace vantora::desktop {

QIcon favouritePicture(const std::string& file)
{
    const auto settings = SettingsFile::Read(qtPath(file));
    const QVariant value =
        settings ? settings->Value(QStringLiteral("ActionIcon")).value_or(QVariant()) : QVariant();
    const auto image = value.value<QImage>();
    return image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image));
}

std::vector<Favourite> favouritesOf(const InstalledAction& action,
                                    const std::vector<InstalledAction>& actions)
{
    std::vector<std::pair<QDateTime, SavedEntry>> entries;
    for (Result<SavedEntry>& entry : savedFavourites()) {
        if (entry && actionNamed(actions, entry->steps.front().action) == &action) {
            const QDateTime time = QFileInfo(qtPath(entry->file)).lastModified();
            entries.emplace_back(time, std::move(*entry));
        }
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& one, const auto& other) { return one.first > other.first; });
    std::vector<Favourite> favourites;
    for (auto& [time, entry] : entries) {
        const QIcon icon = favouritePicture(entry.file);
        favourites.push_back({std::move(entry.name), std::move(entry.steps.front()),
                              icon.isNull() ? CActionUtils::GetIconForTool(action.icon) : icon});
    }
    return favourites;
}

int favouriteBeside(const std::vector<Favourite>& favourites, const std::string& name, int distance)
{
    const auto found = std::find_if(favourites.begin(), favourites.end(),
                                    [&](const Favourite& one) { return one.name == name; });
    const int count = static_cast<int>(favourites.size());
    const int place =
        (found == favourites.end() ? -1
                                   : static_cast<int>(std::distance(favourites.begin(), found))) +
        distance;
    return place >= 0 && place < count ? place : -1;
}

} // namespace vantora::desktop
