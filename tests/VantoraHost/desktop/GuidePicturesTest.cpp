#include "VantoraHost/desktop/choosing/ChoosePane.h"
#include "VantoraHost/desktop/pages/PageDrawing.h"
#include "VantoraHost/desktop/pages/PageGridModel.h"
#include "VantoraHost/desktop/texts/Translations.h"
#include "tests/VantoraHost/desktop/OpenWindow.h"

#include <QtCore/QLocale>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtWidgets/QAbstractItemView>

#include <set>

namespace {

using namespace vantora;
using namespace vantora::desktop;

// Scans of letters: a cover, text, and the blank backs of sheets.
void drawLetter(const QString& file, const QString& title, const std::set<int>& blank)
{
    QPdfWriter writer(file);
    writer.setResolution(72);
    QPainter painter(&writer);
    const QRect paper(0, 0, writer.width(), writer.height());
    const int pages = 8;
    for (int page = 1; page <= pages; ++page) {
        if (page > 1) {
            writer.newPage();
        }
        if (blank.count(page) > 0) {
            continue;
        }
        painter.setFont(QFont("DejaVu Sans", page == 1 ? 28 : 18));
        painter.drawText(paper.adjusted(20, page == 1 ? 120 : 20, -20, 0),
                         Qt::AlignHCenter | Qt::TextWordWrap,
                         page == 1 ? title : QStringLiteral("%1. Part").arg(page - 1));
        if (page == 1) {
            painter.fillRect(QRect(paper.center() - QPoint(90, 20), QSize(180, 160)),
                             QColor(60, 110, 170));
            continue;
        }
        for (int line = 0; line < 26; ++line) {
            const int width = paper.width() - 60 - (line * 37 + page * 11) % 90;
            painter.fillRect(QRect(20, 80 + 20 * line, width, 6), QColor(120, 120, 120));
        }
    }
}

/// The pictures of the guide, taken of the real window: they show what is asserted of them.
class GuidePictures : public OpenWindow {
    const Translations english_{QLocale(QLocale::English)};

protected:
    GuidePictures()
    {
        open(); // in that language
        QStringList files;
        for (const char* name : {"contract", "invoice", "minutes"}) {
            const QString file = QString::fromStdString(scratch.path("in/")) + name + ".pdf";
            drawLetter(file, QString(name).replace(0, 1, QChar(name[0]).toUpper()), {3, 6});
            files << file;
        }
        choose("placeCombo", 1); // beside each document
        window->resize(1360, 860);
        add(files);
    }

    QAbstractItemView& grid() { return *window->findChild<QAbstractItemView*>("pageGrid"); }

    bool isSeen(const QModelIndex& index)
    {
        return grid().viewport()->rect().contains(grid().visualRect(index));
    }

    /// Takes a picture once all pages that can be seen are drawn.
    QImage take(const char* name)
    {
        wait([&] {
            for (int row = 0; row < grid().model()->rowCount(); ++row) {
                const QModelIndex index = grid().model()->index(row, 0);
                if (isSeen(index) &&
                    index.data(PageGridModel::PictureRole).value<QPixmap>().isNull()) {
                    return false;
                }
            }
            return grid().model()->rowCount() > 0;
        });
        const QImage picture = window->grab().toImage();
        const std::filesystem::path folder = std::filesystem::path(BUILD_FOLDER) / "guide";
        std::filesystem::create_directories(folder);
        EXPECT_TRUE(picture.save(QString::fromStdString((folder / name).string())));
        return picture;
    }

    /// The pages that are crossed out in a picture, of those that it shows whole.
    std::vector<int> crossedOut(const QImage& picture)
    {
        std::vector<int> pages;
        std::size_t seen = 0;
        for (int row = 0; row < grid().model()->rowCount(); ++row) {
            const QModelIndex index = grid().model()->index(row, 0);
            if (!isSeen(index)) {
                continue;
            }
            ++seen;
            const QRect at(
                grid().viewport()->mapTo(window.get(), grid().visualRect(index).topLeft()),
                grid().visualRect(index).size());
            const QRgb red = goingColour(grid().palette()).rgb();
            int reds = 0;
            for (int y = at.top(); y <= at.bottom(); ++y) {
                for (int x = at.left(); x <= at.right(); ++x) {
                    reds += picture.pixel(x, y) == red ? 1 : 0;
                }
            }
            if (reds > at.height()) { // more than a number in red has
                pages.push_back(index.data(PageGridModel::PageRole).toInt());
            } else {
                EXPECT_EQ(reds, 0) << "half a cross";
            }
        }
        EXPECT_GE(seen, 3U);
        return pages;
    }

    /// Those that are going to go, of the same.
    std::vector<int> going()
    {
        std::vector<int> pages;
        for (int row = 0; row < grid().model()->rowCount(); ++row) {
            const QModelIndex index = grid().model()->index(row, 0);
            if (isSeen(index) && index.data(PageGridModel::GoesRole).toBool()) {
                pages.push_back(index.data(PageGridModel::PageRole).toInt());
            }
        }
        return pages;
    }
};

TEST_F(GuidePictures, ShowPagesThatAreMarkedCrossedOut)
{
    bench().markForAll("2,5");
    waitForPlan("6 pages will go from 3 documents.");
    const QImage picture = take("window-marks.png");
    EXPECT_EQ(crossedOut(picture), (std::vector<int>{2, 5}));
}

TEST_F(GuidePictures, ShowBlankPagesThatAreFoundBesideTheirNeighbours)
{
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    auto& choosing = part<ChoosePane>("ChoosePane");
    auto& kinds = *choosing.findChild<QComboBox*>("kindCombo");
    kinds.setCurrentIndex(kinds.findText("Blank"));
    wait([&] {
        return choosing.findChild<QLabel*>("statusLabel")->text() ==
               "Found: 6 pages in 3 documents.";
    });
    QTest::mouseClick(choosing.findChild<QWidget*>("reviewButton"), Qt::LeftButton);
    waitForPlan("6 pages will go from 3 documents.");
    const QImage picture = take("window-blank-pages.png");
    const std::vector<int> crossed = crossedOut(picture);
    EXPECT_EQ(crossed, going());
    EXPECT_FALSE(crossed.empty());
    EXPECT_TRUE(std::all_of(crossed.begin(), crossed.end(),
                            [](int page) { return page == 3 || page == 6; }));
}

} // namespace
