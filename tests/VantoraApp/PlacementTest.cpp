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

class Placement : public testing::TestWithParam<PlacementRow> {};

TEST_P(Placement, OfAnObjectOf100By50OnALetterPage)
{
    Options options = GetParam().options;
    const QMatrix matrix = CActionUtils::Prefs2Matrix(&options, 100, 50, 612, 792);
    const QMatrix& expected = GetParam().matrix;
    EXPECT_EQ(matrix.m11(), expected.m11());
    EXPECT_EQ(matrix.m12(), expected.m12());
    EXPECT_EQ(matrix.m21(), expected.m21());
    EXPECT_EQ(matrix.m22(), expected.m22());
    EXPECT_EQ(matrix.dx(), expected.dx());
    EXPECT_EQ(matrix.dy(), expected.dy());
    EXPECT_EQ(options, GetParam().options);
}

INSTANTIATE_TEST_SUITE_P(
    , Placement,
    testing::Values(
        PlacementRow{"without_options_at_the_top_left", {}, {100, 0, 0, 50, 0, 742}},
        PlacementRow{"half_the_width", {{"sizeSpinBox", 50}}, {50, 0, 0, 50, 0, 742}},
        PlacementRow{"twice_the_height", {{"sizeSpinBoxY", "200"}}, {100, 0, 0, 100, 0, 692}},
        PlacementRow{
            "a_quarter_turn_clockwise", {{"rotationSpinBox", 90}}, {0, -100, 50, 0, 0, 792}},
        PlacementRow{"upside_down", {{"rotationSpinBox", 180}}, {-100, 0, 0, -50, 100, 792}},
        PlacementRow{"in_inches_from_the_right_and_bottom",
                     {{"unitsComboBox", 0},
                      {"horiznotalSpinBox", 1},
                      {"verticalSpinBox", 0.5},
                      {"horizontalFromCombo", 1},
                      {"verticalFromCombo", 1}},
                     {100, 0, 0, 50, 440, 36}},
        PlacementRow{"an_unknown_edge_leaves_the_offset",
                     {{"horiznotalSpinBox", 10},
                      {"verticalSpinBox", 20},
                      {"horizontalFromCombo", 3},
                      {"verticalFromCombo", -1}},
                     {100, 0, 0, 50, 10, 20}},
        PlacementRow{"an_unknown_unit_counts_as_points",
                     {{"unitsComboBox", 9}, {"horiznotalSpinBox", 10}},
                     {100, 0, 0, 50, 10, 742}},
        PlacementRow{"the_well_spelt_key_means_nothing",
                     {{"horizontalSpinBox", 10}},
                     {100, 0, 0, 50, 0, 742}}),
    [](const auto& info) { return std::string(info.param.sentence); });

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
