#include "VantoraApp/CActionUtils.h"

#include <QtGui/QFont>
#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtGui/QPixmap>

#include <cmath>
#include <gtest/gtest.h>

namespace {

QFont pixels(int size)
{
    QFont font;
    font.setPixelSize(size);
    return font;
}

double height(const QString& html, double width, int fontSize = 12)
{
    return CActionUtils::GetTextItemHeight(pixels(fontSize), html, width);
}

TEST(TextItemHeight, CountsWrappingMarkupAndFont)
{
    EXPECT_GT(height("one two", 20), 1.5 * height("one two", 1000));
    EXPECT_GT(height("one<br>two", 1000), height("one two", 1000));
    EXPECT_GT(height("<h1>one</h1>", 1000), height("one", 1000));
    EXPECT_GT(height("one", 1000, 30), height("one", 1000, 12) + 15);
    EXPECT_EQ(height("a<b>b</b>", 1000), height("ab", 1000));
}

QIcon textIcon(double width, double height, const QString& text)
{
    QIcon icon;
    CActionUtils::GenerateTextItemIcon(width, height, text, &icon);
    return icon;
}

struct IconRow {
    const char* sentence;
    double width, height;
    QList<QSize> sizes;
};

TEST(TextItemIcon, FitsASquareOf128Pixels)
{
    const IconRow rows[] = {
        {"wide", 256, 64, {{128, 32}}},          {"high", 32, 256, {{16, 128}}},
        {"square", 300, 300, {{128, 128}}},      {"smaller than the square", 10, 5, {{128, 64}}},
        {"fractions", 256.9, 64.9, {{128, 32}}},
    };
    for (const IconRow& row : rows)
        EXPECT_EQ(textIcon(row.width, row.height, "text").availableSizes(), row.sizes)
            << row.sentence;
}

TEST(TextItemIcon, IsNoneWithoutAWholePixel)
{
    for (const auto& [width, height] :
         {std::pair(0.0, 10.0), {10.0, 0.9}, {-5.0, 10.0}, {std::nan(""), 10.0}, {1e300, 1e300}})
        EXPECT_TRUE(textIcon(width, height, "text").isNull()) << width << " by " << height;
}

TEST(TextItemIcon, ShowsTheTextInBlackOnNothing)
{
    const QImage image =
        textIcon(128, 128, "MMM").pixmap(128, 128).toImage().convertToFormat(QImage::Format_ARGB32);
    int drawn = 0;
    for (int y = 0; y < 128; ++y) {
        for (int x = 0; x < 128; ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) == 0)
                continue;
            ++drawn;
            EXPECT_EQ(pixel & 0xFFFFFF, 0u) << "at " << x << ", " << y;
            EXPECT_LT(y, 64) << "the text starts at the top";
        }
    }
    EXPECT_GT(drawn, 20);
    const QImage blank = textIcon(128, 128, "").pixmap(128, 128).toImage();
    EXPECT_EQ(qAlpha(blank.pixel(5, 5)), 0);
    EXPECT_NE(blank, image);
}

TEST(TextItemIcon, IsAddedToWhatTheIconHas)
{
    QPixmap other(8, 8);
    other.fill(Qt::red);
    QIcon icon(other);
    CActionUtils::GenerateTextItemIcon(64, 64, "text", &icon);
    EXPECT_EQ(icon.availableSizes(), QList<QSize>({{8, 8}, {128, 128}}));
    EXPECT_EQ(icon.availableSizes(QIcon::Disabled, QIcon::On), QList<QSize>());
    EXPECT_EQ(icon.pixmap(8, 8).toImage().pixelColor(0, 0), QColor(Qt::red));
}

} // namespace
