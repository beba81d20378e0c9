#include "VantoraApp/CUtils.h"

// The mappings follow P. S. Heckbert, "Fundamentals of Texture Mapping and Image Warping", 1989.

namespace {

bool isNearZero(double value)
{
    return -1e-13 < value && value < 1e-13;
}

} // namespace

double CUtils::mx3d_adjoint(QTransform m, QTransform& out)
{
    const QTransform adjugate(
        m.m22() * m.m33() - m.m23() * m.m32(), m.m32() * m.m13() - m.m33() * m.m12(),
        m.m23() * m.m12() - m.m22() * m.m13(), m.m23() * m.m31() - m.m33() * m.m21(),
        m.m33() * m.m11() - m.m31() * m.m13(), m.m13() * m.m21() - m.m23() * m.m11(),
        m.m32() * m.m21() - m.m22() * m.m31(), m.m31() * m.m12() - m.m32() * m.m11(),
        m.m22() * m.m11() - m.m21() * m.m12());
    out = adjugate;
    return adjugate.m11() * m.m11() + adjugate.m12() * m.m12() + adjugate.m13() * m.m13();
}

int CUtils::pmap_square_quad(QPointF p0, QPointF p1, QPointF p2, QPointF p3, QTransform& out)
{
    const double px = p0.x() - p1.x() + p2.x() - p3.x();
    const double py = p0.y() - p1.y() + p2.y() - p3.y();
    if (isNearZero(px) && isNearZero(py)) {
        out = QTransform(p1.x() - p0.x(), p1.y() - p0.y(), 0, p2.x() - p1.x(), p2.y() - p1.y(), 0,
                         p0.x(), p0.y(), 1);
        return 1;
    }

    const double dx1 = p1.x() - p2.x();
    const double dx2 = p3.x() - p2.x();
    const double dy1 = p1.y() - p2.y();
    const double dy2 = p3.y() - p2.y();
    const double del = dx1 * dy2 - dy1 * dx2;
    if (del == 0) {
        return 0;
    }
    const double g = (dy2 * px - dx2 * py) / del;
    const double h = (dx1 * py - dy1 * px) / del;
    out = QTransform(p1.x() - p0.x() + g * p1.x(), p1.y() - p0.y() + g * p1.y(), g,
                     p3.x() - p0.x() + h * p3.x(), p3.y() - p0.y() + h * p3.y(), h, p0.x(), p0.y(),
                     1);
    return 2;
}

bool CUtils::pmap_quad_rect(double ua, double va, double ub, double vb, QPointF q0, QPointF q1,
                            QPointF q2, QPointF q3, QTransform& out)
{
    const double du = ub - ua;
    const double dv = vb - va;
    if (du == 0 || dv == 0) {
        return false;
    }
    QTransform square;
    if (pmap_square_quad(q0, q1, q2, q3, square) == 0) {
        return false;
    }
    // The third row takes the rectangle's first corner to the square's origin.
    const double m11 = square.m11() / du;
    const double m12 = square.m12() / du;
    const double m13 = square.m13() / du;
    const double m21 = square.m21() / dv;
    const double m22 = square.m22() / dv;
    const double m23 = square.m23() / dv;
    out = QTransform(m11, m12, m13, m21, m22, m23, square.m31() - ua * m11 - va * m21,
                     square.m32() - ua * m12 - va * m22, square.m33() - ua * m13 - va * m23);
    return true;
}
