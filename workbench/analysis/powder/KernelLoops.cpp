// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/KernelLoops.h"

// Nothing of the library is included here but what has no code: see KernelLoops.h.

namespace Workbench::Powder::POWDER_INSTRUCTION_SET {

namespace {

inline double squareRoot(double x)
{
    return __builtin_sqrt(x);
}

void directions(size_t n, size_t row, double *__restrict x, double *__restrict y, double *__restrict z,
                double *__restrict inverse)
{
    const int count = int(n - row) + 1;
    const double height = double(row), rest = double(n - row);
    for (int j = 0; j < count; ++j) {
        const double a = double(j), b = rest - a;
        const double i = 1 / squareRoot(a * a + b * b + height * height);
        x[j] = a * i;
        y[j] = b * i;
        z[j] = height * i;
        inverse[j] = i;
    }
}

/// 2 atan(volume / denominator): A. van Oosterom, J. Strackee, IEEE Trans. Biomed. Eng. 30 (1983) 125. The quotient is
/// below 0.1 from four rows on, and the first term left out then below 1e-14 of the first.
inline double solidAngle(double volume, double denominator)
{
    const double t = volume / denominator, s = t * t;
    return 2 * t
        * (1 - s * (1.0 / 3 - s * (1.0 / 5 - s * (1.0 / 7 - s * (1.0 / 9 - s * (1.0 / 11 - s * (1.0 / 13)))))));
}

void solidAngles(size_t n, size_t count, const double *__restrict x0, const double *__restrict y0,
                 const double *__restrict z0, const double *__restrict i0, const double *__restrict x1,
                 const double *__restrict y1, const double *__restrict z1, const double *__restrict i1,
                 double *__restrict up, double *__restrict down)
{
    // The determinant of three neighbouring points of the flat lattice is n, whatever the triangle.
    const double scale = double(n);
    const int last = int(count) - 1;
    for (int j = 0; j < last; ++j) {
        const double ab = x0[j] * x0[j + 1] + y0[j] * y0[j + 1] + z0[j] * z0[j + 1];
        const double bc = x0[j + 1] * x1[j] + y0[j + 1] * y1[j] + z0[j + 1] * z1[j];
        const double ca = x1[j] * x0[j] + y1[j] * y0[j] + z1[j] * z0[j];
        up[j] = solidAngle(scale * i0[j] * i0[j + 1] * i1[j], 1 + ab + bc + ca);
    }
    for (int j = 0; j < last - 1; ++j) {
        const double ab = x0[j + 1] * x1[j] + y0[j + 1] * y1[j] + z0[j + 1] * z1[j];
        const double bc = x1[j] * x1[j + 1] + y1[j] * y1[j + 1] + z1[j] * z1[j + 1];
        const double ca = x1[j + 1] * x0[j + 1] + y1[j + 1] * y0[j + 1] + z1[j + 1] * z0[j + 1];
        down[j] = solidAngle(scale * i0[j + 1] * i1[j] * i1[j + 1], 1 + ab + bc + ca);
    }
}

inline double value(const double *form, double x, double y, double z)
{
    return x * (form[0] * x + form[3] * y + form[4] * z) + y * (form[1] * y + form[5] * z) + form[2] * (z * z);
}

void frequencies(const FrequencyForm *form, double limit, size_t count, const double *__restrict x,
                 const double *__restrict y, const double *__restrict z, double *__restrict nu)
{
    const FrequencyForm f = *form;
    for (size_t j = 0; j < count; ++j) {
        const double p = value(f.coupling, x[j], y[j], z[j]);
        const double v = f.constant + value(f.quadratic, x[j], y[j], z[j]) + f.quartic * (p * p);
        const double raised = v > 0 ? v : 0;
        nu[j] = raised < limit ? raised : limit;
    }
}

/// Adds linear functions of the bin's number to runs of bins, one by one.
struct EachBin {
    double *bins;

    void add(int from, int to, double slope, double constant) const
    {
        for (int i = from; i < to; ++i)
            bins[i] += slope * double(i) + constant;
    }
};

/// The same where runs are long: notes where they begin and end.
struct Ramps {
    double *slopes, *constants;

    void add(int from, int to, double slope, double constant) const
    {
        if (from >= to)
            return;
        slopes[from] += slope;
        slopes[to] -= slope;
        constants[from] += constant;
        constants[to] -= constant;
    }
};

/// D. W. Alderman, M. S. Solum, D. M. Grant, J. Chem. Phys. 84 (1986) 3717: the distribution rises linearly from the
/// lowest corner a to the middle one b and falls to the highest, c. Each bin gets the integral over it.
template <class Runs>
inline void addTriangle(double u, double v, double w, double weight, double *bins, const Runs &runs)
{
    const double low = u < v ? u : v, high = u < v ? v : u;
    const double a = low < w ? low : w, c = high > w ? high : w;
    const double inner = high < w ? high : w;
    const double b = low > inner ? low : inner;
    const int first = int(a), middle = int(b), last = int(c);
    if (first == last) {
        bins[first] += weight;
        return;
    }
    double before = 0, after = 0; // the middle bin
    const double perWidth = weight / (c - a);
    if (middle > first) {
        const double rise = perWidth / (b - a);
        const double start = first + 1 - a, whole = middle - a;
        bins[first] += rise * (start * start);
        runs.add(first + 1, middle, 2 * rise, rise * (1 - 2 * a));
        before = rise * (whole * whole);
    }
    if (last > middle) {
        const double fall = perWidth / (c - b);
        const double end = c - last, rest = c - (middle + 1);
        bins[last] += fall * (end * end);
        runs.add(middle + 1, last, -2 * fall, fall * (2 * c - 1));
        after = fall * (rest * rest);
    }
    bins[middle] += weight - before - after;
}

void addTriangles(size_t count, const double *row, const double *next, const double *up, const double *down,
                  double *bins, double *slopes, double *constants)
{
    const Ramps ramps = {slopes, constants};
    for (size_t j = 0; j + 1 < count; ++j) {
        addTriangle(row[j], row[j + 1], next[j], up[j], bins, ramps);
        if (j + 2 < count)
            addTriangle(row[j + 1], next[j], next[j + 1], down[j], bins, ramps);
    }
}

/// One stage of radix 4 of the autosorting transform without bit reversal (Stockham): n points left, `stride`
/// sequences.
inline void stage4(const Twiddles &t, size_t n, size_t stride, const double *__restrict xr, const double *__restrict xi,
                   double *__restrict yr, double *__restrict yi)
{
    const size_t quarter = n / 4, step = t.size / n;
    for (size_t p = 0; p < quarter; ++p) {
        const double c1 = t.cosines[p * step], s1 = t.sines[p * step];
        const double c2 = t.cosines[2 * p * step], s2 = t.sines[2 * p * step];
        const double c3 = t.cosines[3 * p * step], s3 = t.sines[3 * p * step];
        const double *ar = xr + stride * p, *br = ar + stride * quarter, *cr = br + stride * quarter,
                     *dr = cr + stride * quarter;
        const double *ai = xi + stride * p, *bi = ai + stride * quarter, *ci = bi + stride * quarter,
                     *di = ci + stride * quarter;
        double *r = yr + stride * 4 * p, *i = yi + stride * 4 * p;
        for (size_t q = 0; q < stride; ++q) {
            const double sumR = ar[q] + cr[q], sumI = ai[q] + ci[q], differenceR = ar[q] - cr[q],
                         differenceI = ai[q] - ci[q];
            const double otherR = br[q] + dr[q], otherI = bi[q] + di[q];
            const double turnedR = di[q] - bi[q], turnedI = br[q] - dr[q]; // i (b - d)
            r[q] = sumR + otherR;
            i[q] = sumI + otherI;
            const double oneR = differenceR - turnedR, oneI = differenceI - turnedI;
            r[q + stride] = oneR * c1 + oneI * s1;
            i[q + stride] = oneI * c1 - oneR * s1;
            const double twoR = sumR - otherR, twoI = sumI - otherI;
            r[q + 2 * stride] = twoR * c2 + twoI * s2;
            i[q + 2 * stride] = twoI * c2 - twoR * s2;
            const double threeR = differenceR + turnedR, threeI = differenceI + turnedI;
            r[q + 3 * stride] = threeR * c3 + threeI * s3;
            i[q + 3 * stride] = threeI * c3 - threeR * s3;
        }
    }
}

inline void stage2(size_t stride, const double *__restrict xr, const double *__restrict xi, double *__restrict yr,
                   double *__restrict yi)
{
    for (size_t q = 0; q < stride; ++q) {
        const double r = xr[q + stride], i = xi[q + stride];
        yr[q] = xr[q] + r;
        yi[q] = xi[q] + i;
        yr[q + stride] = xr[q] - r;
        yi[q + stride] = xi[q] - i;
    }
}

/// The same for one sequence, in the order that suits vectors.
inline void firstStage4(const Twiddles &t, const double *__restrict xr, const double *__restrict xi,
                        double *__restrict yr, double *__restrict yi)
{
    const int quarter = int(t.size / 4);
    const double *cosines = t.cosines, *sines = t.sines;
    const double *br = xr + quarter, *cr = br + quarter, *dr = cr + quarter;
    const double *bi = xi + quarter, *ci = bi + quarter, *di = ci + quarter;
    for (int p = 0; p < quarter; ++p) {
        const double sumR = xr[p] + cr[p], sumI = xi[p] + ci[p], differenceR = xr[p] - cr[p],
                     differenceI = xi[p] - ci[p];
        const double otherR = br[p] + dr[p], otherI = bi[p] + di[p];
        const double turnedR = di[p] - bi[p], turnedI = br[p] - dr[p];
        const double oneR = differenceR - turnedR, oneI = differenceI - turnedI;
        const double twoR = sumR - otherR, twoI = sumI - otherI;
        const double threeR = differenceR + turnedR, threeI = differenceI + turnedI;
        yr[4 * p] = sumR + otherR;
        yi[4 * p] = sumI + otherI;
        yr[4 * p + 1] = oneR * cosines[p] + oneI * sines[p];
        yi[4 * p + 1] = oneI * cosines[p] - oneR * sines[p];
        yr[4 * p + 2] = twoR * cosines[2 * p] + twoI * sines[2 * p];
        yi[4 * p + 2] = twoI * cosines[2 * p] - twoR * sines[2 * p];
        yr[4 * p + 3] = threeR * cosines[3 * p] + threeI * sines[3 * p];
        yi[4 * p + 3] = threeI * cosines[3 * p] - threeR * sines[3 * p];
    }
}

/// True when the result is in the second pair of arrays.
inline bool stages(const Twiddles &t, size_t batch, double *r0, double *i0, double *r1, double *i1)
{
    bool swapped = false;
    size_t n = t.size, stride = batch;
    for (; n >= 4; n /= 4, stride *= 4, swapped = !swapped) {
        if (stride == 1)
            firstStage4(t, r0, i0, r1, i1);
        else if (swapped)
            stage4(t, n, stride, r1, i1, r0, i0);
        else
            stage4(t, n, stride, r0, i0, r1, i1);
    }
    if (n == 2) {
        if (swapped)
            stage2(stride, r1, i1, r0, i0);
        else
            stage2(stride, r0, i0, r1, i1);
        swapped = !swapped;
    }
    return swapped;
}

void transform(const Twiddles *twiddles, size_t batch, double *re, double *im, double *work)
{
    const size_t size = twiddles->size * batch;
    if (!stages(*twiddles, batch, re, im, work, work + size))
        return;
    for (size_t i = 0; i < size; ++i) {
        re[i] = work[i];
        im[i] = work[size + i];
    }
}

/// For a in the first octant, q applied to vectors, and so on: coefficients of the rotation's harmonics. The rotor
/// turns e1 towards e2 about a; b.q.b = constant + c1 cos wt + s1 sin wt + c2 cos 2wt + s2 sin 2wt.
struct Harmonics {
    double c1, s1, c2, s2;
};

inline Harmonics harmonics(const double *form, double ax, double ay, double az, double ux, double uy, double uz,
                           double vx, double vy, double vz)
{
    // Off-diagonal elements stand doubled in a form.
    const double xy = 0.5 * form[3], xz = 0.5 * form[4], yz = 0.5 * form[5];
    const double ex = form[0] * ux + xy * uy + xz * uz;
    const double ey = xy * ux + form[1] * uy + yz * uz;
    const double ez = xz * ux + yz * uy + form[2] * uz;
    const double fx = form[0] * vx + xy * vy + xz * vz;
    const double fy = xy * vx + form[1] * vy + yz * vz;
    const double fz = xz * vx + yz * vy + form[2] * vz;
    constexpr double single = 0.9428090415820634; // 2 sin cos of the magic angle, sqrt(8) / 3
    constexpr double twice = 1.0 / 3; // sin^2 / 2
    return {single * (ax * ex + ay * ey + az * ez), single * (ax * fx + ay * fy + az * fz),
            twice * ((ux * ex + uy * ey + uz * ez) - (vx * fx + vy * fy + vz * fz)),
            2 * twice * (vx * ex + vy * ey + vz * ez)};
}

/// Cosine and sine of so many turns, to 1e-10: polynomials of half the angle, which lies within a quarter of a turn
/// (interpolated at the Chebyshev points of the square), and the formulas of the double angle.
inline void cosineAndSine(double turns, double &cosine, double &sine)
{
    constexpr double shift = 6755399441055744.0; // 1.5 * 2^52: rounds to the nearest whole number
    const double whole = (turns + shift) - shift;
    const double x = turns - whole;
    const double y = x * x;
    const double s = x
        * (3.141592653536132
           + y
               * (-5.167712764593
                  + y
                      * (2.550163317938427
                         + y * (-0.599252186531583 + y * (0.08205035020147247 + y * -0.007028303855203096)))));
    const double c = 1
        + y
            * (-4.934802200532585
               + y
                   * (4.0587121229329455
                      + y
                          * (-1.3352626061553212
                             + y * (0.23532784935188983 + y * (-0.025785374788406677 + y * 0.0018525902544749779)))));
    sine = 2 * s * c;
    cosine = 1 - 2 * (s * s);
}

void sidebands(const FrequencyForm *form, double rate, const Twiddles *twiddles, const double *__restrict x,
               const double *__restrict y, const double *__restrict z, double *__restrict work,
               double *__restrict weights)
{
    constexpr int L = laneCount;
    const FrequencyForm f = *form;
    // Coefficients of the phase, in turns: sines and cosines of harmonics 1 to 4.
    double sine1[L], cosine1[L], sine2[L], cosine2[L], sine3[L], cosine3[L], sine4[L], cosine4[L];
    const double scale = 0.15915494309189535 / rate; // 1 / (2 pi rate)
    for (int l = 0; l < L; ++l) {
        const double ax = x[l], ay = y[l], az = z[l];
        // T. Duff et al., J. Comput. Graph. Tech. 6 (2017) 1: a frame without a branch.
        const double t = -1 / (1 + az), b = ax * ay * t;
        const double ux = 1 + ax * ax * t, uy = b, uz = -ax;
        const double vx = b, vy = 1 + ay * ay * t, vz = -ay;
        const Harmonics d = harmonics(f.quadratic, ax, ay, az, ux, uy, uz, vx, vy, vz);
        const Harmonics q = harmonics(f.coupling, ax, ay, az, ux, uy, uz, vx, vy, vz);
        const double half = 0.5 * f.quartic;
        // (p1 + p2)^2, with p1 = c1 cos + s1 sin and so on, in harmonics.
        const double c1 = d.c1 + 2 * half * (q.c1 * q.c2 + q.s1 * q.s2),
                     s1 = d.s1 + 2 * half * (q.c1 * q.s2 - q.s1 * q.c2);
        const double c2 = d.c2 + half * (q.c1 * q.c1 - q.s1 * q.s1), s2 = d.s2 + 2 * half * (q.c1 * q.s1);
        const double c3 = 2 * half * (q.c1 * q.c2 - q.s1 * q.s2), s3 = 2 * half * (q.c1 * q.s2 + q.s1 * q.c2);
        const double c4 = half * (q.c2 * q.c2 - q.s2 * q.s2), s4 = 2 * half * (q.c2 * q.s2);
        sine1[l] = scale * c1;
        cosine1[l] = -scale * s1;
        sine2[l] = scale / 2 * c2;
        cosine2[l] = -scale / 2 * s2;
        sine3[l] = scale / 3 * c3;
        cosine3[l] = -scale / 3 * s3;
        sine4[l] = scale / 4 * c4;
        cosine4[l] = -scale / 4 * s4;
    }
    const size_t steps = twiddles->size, half = steps / 2, mask = steps - 1;
    double *re = work, *im = work + steps * L;
    for (size_t j = 0; j < half; ++j) {
        const double C1 = twiddles->cosines[j], S1 = twiddles->sines[j];
        const double C2 = twiddles->cosines[2 * j & mask], S2 = twiddles->sines[2 * j & mask];
        const double C3 = twiddles->cosines[3 * j & mask], S3 = twiddles->sines[3 * j & mask];
        const double C4 = twiddles->cosines[4 * j & mask], S4 = twiddles->sines[4 * j & mask];
        double *r0 = re + j * L, *i0 = im + j * L, *r1 = re + (j + half) * L, *i1 = im + (j + half) * L;
        for (int l = 0; l < L; ++l) {
            // Half a turn later the odd harmonics have the other sign.
            const double even = (C2 * cosine2[l] + S2 * sine2[l]) + (C4 * cosine4[l] + S4 * sine4[l]);
            const double odd = (C1 * cosine1[l] + S1 * sine1[l]) + (C3 * cosine3[l] + S3 * sine3[l]);
            cosineAndSine(even + odd, r0[l], i0[l]);
            cosineAndSine(even - odd, r1[l], i1[l]);
        }
    }
    double *other = work + 2 * steps * L;
    if (stages(*twiddles, L, re, im, other, other + steps * L)) {
        re = other;
        im = other + steps * L;
    }
    const double norm = 1 / (double(steps) * double(steps));
    for (int l = 0; l < L; ++l) {
        double *to = weights + size_t(l) * steps;
        for (size_t k = 0; k < steps; ++k) {
            const double r = re[k * L + size_t(l)], i = im[k * L + size_t(l)];
            to[k] = norm * (r * r + i * i);
        }
    }
}

void addWeightedTriangle(const double *corners, double part, size_t count, const double *__restrict w0,
                         const double *__restrict w1, const double *__restrict w2, double *__restrict profile,
                         double *__restrict bins)
{
    const double low = corners[0] < corners[1] ? corners[0] : corners[1];
    const double high = corners[0] < corners[1] ? corners[1] : corners[0];
    const int first = int(low < corners[2] ? low : corners[2]), last = int(high > corners[2] ? high : corners[2]);
    double *shares = profile - first;
    for (int b = first; b <= last; ++b)
        shares[b] = 0;
    addTriangle(corners[0], corners[1], corners[2], part, shares, EachBin{shares});
    for (int b = first; b <= last; ++b) {
        const double share = shares[b];
        double *row = bins + size_t(b) * count;
        for (size_t k = 0; k < count; ++k)
            row[k] += share * (w0[k] + w1[k] + w2[k]);
    }
}

} // namespace

extern const Kernels kernels;
const Kernels kernels = {directions, solidAngles, frequencies, addTriangles, sidebands, addWeightedTriangle, transform};

} // namespace Workbench::Powder::POWDER_INSTRUCTION_SET
