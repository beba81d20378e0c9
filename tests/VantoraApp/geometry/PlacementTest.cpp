#include "VantoraApp/CActionUtils.h"

#include <QtCore/QRectF>
#include <gtest/gtest.h>
#include <random>

namespace {

using Options = QMap<QString, QVariant>;

struct PlacementRow {
    const char* sentence;
    Options options;
    QMatrix matrix;
};

TEST(Placement, OfAnObjectOf100By50OnALetterPage)
{
    const PlacementRow rows[] = {
        {"without options at the top left", {}, {100, 0, 0, 50, 0, 742}},
        {"half the width", {{"sizeSpinBox", 50}}, {50, 0, 0, 50, 0, 742}},
        {"twice the height", {{"sizeSpinBoxY", "200"}}, {100, 0, 0, 100, 0, 692}},
        {"a quarter turn clockwise", {{"rotationSpinBox", 90}}, {0, -100, 50, 0, 0, 792}},
        {"upside down", {{"rotationSpinBox", 180}}, {-100, 0, 0, -50, 100, 792}},
        {"in inches from the right and bottom",
         {{"unitsComboBox", 0},
          {"horiznotalSpinBox", 1},
          {"verticalSpinBox", 0.5},
          {"horizontalFromCombo", 1},
          {"verticalFromCombo", 1}},
         {100, 0, 0, 50, 440, 36}},
        {"an unknown edge leaves the offset",
         {{"horiznotalSpinBox", 10},
          {"verticalSpinBox", 20},
          {"horizontalFromCombo", 3},
          {"verticalFromCombo", -1}},
         {100, 0, 0, 50, 10, 20}},
        {"an unknown unit counts as points",
         {{"unitsComboBox", 9}, {"horiznotalSpinBox", 10}},
         {100, 0, 0, 50, 10, 742}},
        {"the well spelt key means nothing", {{"horizontalSpinBox", 10}}, {100, 0, 0, 50, 0, 742}}};
    for (const PlacementRow& row : rows) {
        SCOPED_TRACE(row.sentence);
        Options options = row.options;
        EXPECT_EQ(CActionUtils::Prefs2Matrix(&options, 100, 50, 612, 792), row.matrix);
        EXPECT_EQ(options, row.options);
    }
}

TEST(PlacementLaw, TheBoundingBoxKeepsItsDistancesWhateverSizeAndRotation)
{
    constexpr unsigned seed = 20240607;
    std::mt19937 random(seed);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int trial = 0; trial < 2000; ++trial) {
        const int horizontal = trial % 3;
        const int vertical = trial / 3 % 3;
        const double right = between(-50, 50);
        const double down = between(-50, 50);
        const double width = between(100, 1000);
        const double height = between(100, 1000);
        Options options{{"sizeSpinBox", between(1, 300)},
                        {"sizeSpinBoxY", between(1, 300)},
                        {"rotationSpinBox", between(-720, 720)},
                        {"horiznotalSpinBox", right},
                        {"verticalSpinBox", down},
                        {"horizontalFromCombo", horizontal},
                        {"verticalFromCombo", vertical}};
        const QMatrix matrix =
            CActionUtils::Prefs2Matrix(&options, between(1, 300), between(1, 300), width, height);
        const QRectF box = matrix.mapRect(QRectF(0, 0, 1, 1));
        // The page's y axis points up, so the box's bottom() is its upper edge.
        const double fromLeft[] = {box.left(), width - box.right(), box.center().x() - width / 2};
        const double fromTop[] = {height - box.bottom(), box.top(), height / 2 - box.center().y()};
        EXPECT_NEAR(fromLeft[horizontal], right, 1e-9) << "seed " << seed << ", trial " << trial;
        EXPECT_NEAR(fromTop[vertical], down, 1e-9) << "seed " << seed << ", trial " << trial;
    }
}

} // namespace
