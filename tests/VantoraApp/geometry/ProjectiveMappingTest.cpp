#include "VantoraApp/CUtils.h"

#include <QtGui/QTransform>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

constexpr unsigned seed = 20240608;
constexpr int trials = 2000;

using Elements = std::array<double, 9>;

Elements elements(const QTransform& m)
{
    return {m.m11(), m.m12(), m.m13(), m.m21(), m.m22(), m.m23(), m.m31(), m.m32(), m.m33()};
}

/// The product, worked out here because QTransform's leaves out what it takes for 0 and 1.
Elements product(const QTransform& left, const QTransform& right)
{
    const Elements a = elements(left);
    const Elements b = elements(right);
    Elements result{};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            for (int k = 0; k < 3; ++k) {
                result[row * 3 + column] += a[row * 3 + k] * b[k * 3 + column];
            }
        }
    }
    return result;
}

QPointF mapped(const QTransform& m, double x, double y)
{
    const double w = m.m13() * x + m.m23() * y + m.m33();
    return {(m.m11() * x + m.m21() * y + m.m31()) / w, (m.m12() * x + m.m22() * y + m.m32()) / w};
}

void expectNear(QPointF actual, QPointF expected, int trial)
{
    EXPECT_NEAR(actual.x(), expected.x(), 1e-8) << "seed " << seed << ", trial " << trial;
    EXPECT_NEAR(actual.y(), expected.y(), 1e-8) << "seed " << seed << ", trial " << trial;
}

class Random {
public:
    double between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }

    /// A convex quadrilateral, now a parallelogram and now a general one, in either sense.
    std::array<QPointF, 4> quadrilateral(int trial)
    {
        std::array<QPointF, 4> q = {
            QPointF(between(0, 40), between(0, 40)), QPointF(between(60, 100), between(0, 40)),
            QPointF(between(60, 100), between(60, 100)), QPointF(between(0, 40), between(60, 100))};
        if (trial % 4 == 0) {
            q[3] = q[0] + q[2] - q[1];
        }
        if (trial % 3 == 0) {
            std::swap(q[1], q[3]);
        }
        return q;
    }

private:
    std::mt19937 engine_{seed};
};

TEST(Adjugate, TimesTheMatrixIsTheDeterminantTimesTheIdentity)
{
    Random random;
    for (int trial = 0; trial < trials; ++trial) {
        Elements e{};
        for (double& element : e) {
            element = random.between(-10, 10);
        }
        const QTransform m(e[0], e[1], e[2], e[3], e[4], e[5], e[6], e[7], e[8]);
        QTransform adjugate;
        CUtils::mx3d_adjoint(m, adjugate);
        const double determinant = m.determinant();
        const Elements found = product(m, adjugate);
        for (int i = 0; i < 9; ++i) {
            EXPECT_NEAR(found[i], i % 4 == 0 ? determinant : 0, 1e-10)
                << "seed " << seed << ", trial " << trial << ", element " << i;
        }
    }
}

TEST(Adjugate, ReturnsTheProductOfTheFirstRows)
{
    QTransform out;
    // The adjugate's first row here is 2 * 10 - 3 * 8, 8 * 4 - 10 * 5, 3 * 5 - 2 * 4.
    EXPECT_EQ(CUtils::mx3d_adjoint(QTransform(1, 5, 4, 6, 2, 3, 7, 8, 10), out),
              -4 * 1 + -18 * 5 + 7 * 4);
}

TEST(SquareToQuadrilateral, MapsCornersToCorners)
{
    Random random;
    for (int trial = 0; trial < trials; ++trial) {
        const auto [p0, p1, p2, p3] = random.quadrilateral(trial);
        QTransform mapping;
        const int kind = CUtils::pmap_square_quad(p0, p1, p2, p3, mapping);
        ASSERT_EQ(kind, trial % 4 == 0 ? 1 : 2) << "seed " << seed << ", trial " << trial;
        expectNear(mapped(mapping, 0, 0), p0, trial);
        expectNear(mapped(mapping, 1, 0), p1, trial);
        expectNear(mapped(mapping, 1, 1), p2, trial);
        expectNear(mapped(mapping, 0, 1), p3, trial);
    }
}

TEST(SquareToQuadrilateral, TakesDeviationsBelowItsToleranceForAffine)
{
    QTransform mapping;
    EXPECT_EQ(CUtils::pmap_square_quad({0.9e-13, 0}, {1, 0}, {1, 1}, {0, 1}, mapping), 1);
    EXPECT_EQ(CUtils::pmap_square_quad({-0.9e-13, 0}, {1, 0}, {1, 1}, {0, 1}, mapping), 1);
    EXPECT_EQ(CUtils::pmap_square_quad({1e-12, 0}, {1, 0}, {1, 1}, {0, 1}, mapping), 2);
    EXPECT_EQ(CUtils::pmap_square_quad({0, 1e-12}, {1, 0}, {1, 1}, {0, 1}, mapping), 2);
}

TEST(RectangleToQuadrilateral, MapsCornersToCorners)
{
    Random random;
    for (int trial = 0; trial < trials; ++trial) {
        const auto [q0, q1, q2, q3] = random.quadrilateral(trial);
        const double ua = random.between(-100, 100);
        const double va = random.between(-100, 100);
        const double ub = ua + random.between(1, 200) * (trial % 2 == 0 ? 1 : -1);
        const double vb = va + random.between(1, 200) * (trial % 5 == 0 ? 1 : -1);
        QTransform mapping;
        ASSERT_TRUE(CUtils::pmap_quad_rect(ua, va, ub, vb, q0, q1, q2, q3, mapping));
        expectNear(mapped(mapping, ua, va), q0, trial);
        expectNear(mapped(mapping, ub, va), q1, trial);
        expectNear(mapped(mapping, ub, vb), q2, trial);
        expectNear(mapped(mapping, ua, vb), q3, trial);
    }
}

TEST(RectangleToQuadrilateral, LeavesTheResultAloneWhenThereIsNone)
{
    const QTransform before(1, 2, 3, 4, 5, 6, 7, 8, 9);
    QTransform mapping = before;
    const QPointF a(0, 0), b(1, 0), c(1, 1), d(0, 1);
    EXPECT_FALSE(CUtils::pmap_quad_rect(3, 0, 3, 1, a, b, c, d, mapping));
    EXPECT_FALSE(CUtils::pmap_quad_rect(0, 3, 1, 3, a, b, c, d, mapping));
    EXPECT_FALSE(CUtils::pmap_quad_rect(0, 0, 1, 1, {0, 1}, {1, 0}, {2, 0}, {3, 0}, mapping));
    EXPECT_EQ(CUtils::pmap_square_quad({0, 1}, {1, 0}, {2, 0}, {3, 0}, mapping), 0);
    EXPECT_EQ(elements(mapping), elements(before));
}

} // namespace
