#pragma once

#include <gp_Trsf.hxx>

/// A rigid transform on plain numbers, for loops that compose many of them: gp_Trsf checks its form at every
/// product and normalises on every write, which costs more than the arithmetic.
struct Rigid {
    double r[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1}; ///< rotation, row by row
    double p[3] = {0, 0, 0};                   ///< translation, mm

    /// Takes the rotation (scale included) and translation of a transform.
    static Rigid From(const gp_Trsf& trsf) {
        const gp_Mat m = trsf.VectorialPart();
        const gp_XYZ& t = trsf.TranslationPart();
        return {{m(1, 1), m(1, 2), m(1, 3), m(2, 1), m(2, 2), m(2, 3), m(3, 1), m(3, 2), m(3, 3)},
                {t.X(), t.Y(), t.Z()}};
    }

    /// Writes the numbers unchanged, without the orthogonalisation of gp_Trsf::SetValues, so that From
    /// followed by StoreTo gives the same transform to the bit. The target must have scale 1.
    void StoreTo(gp_Trsf& trsf) const {
        // gp_Trsf offers no unchecked setter; its parts are reachable by reference and the object is not
        // const.
        const_cast<gp_Mat&>(trsf.HVectorialPart()) =
            gp_Mat(r[0], r[1], r[2], r[3], r[4], r[5], r[6], r[7], r[8]);
        const_cast<gp_XYZ&>(trsf.TranslationPart()).SetCoord(p[0], p[1], p[2]);
        trsf.SetForm(gp_CompoundTrsf);
    }

    /// The transform with these numbers, unchanged to the bit.
    gp_Trsf ToTrsf() const {
        gp_Trsf trsf;
        StoreTo(trsf);
        return trsf;
    }
};

/// The product a * b: X_AB * X_BC is X_AC.
inline Rigid operator*(const Rigid& a, const Rigid& b) {
    Rigid c;
    for (int row = 0; row < 3; ++row) {
        const double* ar = a.r + 3 * row;
        for (int col = 0; col < 3; ++col) {
            c.r[3 * row + col] = ar[0] * b.r[col] + ar[1] * b.r[3 + col] + ar[2] * b.r[6 + col];
        }
        c.p[row] = ar[0] * b.p[0] + ar[1] * b.p[1] + ar[2] * b.p[2] + a.p[row];
    }
    return c;
}
