// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/KernelLoops.h"

// Nothing of the library is included here but what has no code: see KernelLoops.h.

namespace Workbench::Powder::POWDER_INSTRUCTION_SET {

namespace {

// Inlined functions forget that their pointers are restricted.
#define POWDER_APART __attribute__((noinline))

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

/// Steeper flanks than can be told apart would drown the others in rounding.
constexpr double leastFlank = 1.0 / 1024;

/// D. W. Alderman, M. S. Solum, D. M. Grant, J. Chem. Phys. 84 (1986) 3717: the values of a function that is linear
/// over a triangle rise linearly in number from the lowest corner to the middle one, and fall to the highest. So the
/// distribution is known by how its slope changes at the three corners; here for the weight 1.
struct Tent {
    double a, b, c; ///< corners, lowest first
    double scale; ///< the changes are this times c - b, a - c, b - a
    bool isSteep; ///< they are not to be told from each other
};

inline Tent tent(double u, double v, double w)
{
    const double low = u < v ? u : v, high = u < v ? v : u;
    const double a = low < w ? low : w, c = high > w ? high : w;
    const double inner = high < w ? high : w, b = low > inner ? low : inner;
    const double rise = b - a, fall = c - b;
    const bool isSteep = (rise < fall ? rise : fall) < leastFlank;
    return {a, b, c, isSteep ? 0 : 2 / (rise * fall * (c - a)), isSteep};
}

/// The change of slope at the corner that lies at `place`.
inline double change(const Tent &t, double place)
{
    const double outer = place == t.a ? t.c - t.b : t.b - t.a;
    return t.scale * (place == t.b ? t.a - t.c : outer);
}

/// What a change of slope makes of the second differences in four neighbouring bins: the cubic B-spline, values of the
/// hats' convolution with each other.
struct Share {
    int bin;
    double first, second, third, last;
};

inline Share kink(double place, double slope)
{
    const int bin = int(place);
    const double v = place - bin, u = 1 - v;
    const double first = slope * (1.0 / 6) * (u * u * u), last = slope * (1.0 / 6) * (v * v * v);
    const double second = slope * (2.0 / 3 - v * v * (1 - 0.5 * v));
    return {bin, first, second, slope - first - second - last, last};
}

/// Second differences of all at one place.
inline Share line(double place, double weight)
{
    const int bin = int(place);
    const double v = weight * (place - bin), u = weight - v;
    return {bin, u, v - 2 * u, u - 2 * v, v};
}

/// Of a triangle with steep flanks: these are made a little less so. Calls add(place, share) up to three times.
template <typename Add>
inline void addSteep(const Tent &t, double weight, const Add &add)
{
    if (t.c - t.a < leastFlank)
        return add(line((t.a + t.b + t.c) * (1.0 / 3), weight));
    const double b = t.b > t.a + leastFlank ? t.b : t.a + leastFlank;
    const double c = t.c > b + leastFlank ? t.c : b + leastFlank;
    const double perWidth = 2 * weight / (c - t.a), rise = perWidth / (b - t.a), fall = perWidth / (c - b);
    add(kink(t.a, rise));
    add(kink(b, -(rise + fall)));
    add(kink(c, fall));
}

inline void addShare(const Share &share, double *bins)
{
    double *at = bins + share.bin;
    at[0] += share.first;
    at[1] += share.second;
    at[2] += share.third;
    at[3] += share.last;
}

/// So many go through a loop in vectors before they are handed out one by one.
constexpr int blockSize = 64;

POWDER_APART void addTents(size_t count, const double *u, const double *v, const double *w, const double *weights,
                           double *slopesU, double *slopesV, double *slopesW, double *bins)
{
    double ofU[blockSize], ofV[blockSize], ofW[blockSize];
    for (size_t start = 0; start < count; start += blockSize) {
        const int n = count - start < blockSize ? int(count - start) : blockSize;
        const double *a = u + start, *b = v + start, *c = w + start, *weight = weights + start;
        int steep = 0;
        for (int j = 0; j < n; ++j) {
            const Tent t = tent(a[j], b[j], c[j]);
            ofU[j] = weight[j] * change(t, a[j]);
            ofV[j] = weight[j] * change(t, b[j]);
            ofW[j] = weight[j] * change(t, c[j]);
            steep += t.isSteep ? 1 : 0;
        }
        for (int j = 0; j < n; ++j)
            slopesU[start + size_t(j)] += ofU[j];
        for (int j = 0; j < n; ++j)
            slopesV[start + size_t(j)] += ofV[j];
        for (int j = 0; j < n; ++j)
            slopesW[start + size_t(j)] += ofW[j];
        for (int j = 0; steep > 0; ++j) {
            const Tent t = tent(a[j], b[j], c[j]);
            if (!t.isSteep)
                continue;
            addSteep(t, weight[j], [bins](const Share &share) { addShare(share, bins); });
            --steep;
        }
    }
}

void addTriangles(size_t count, const double *row, const double *next, const double *up, const double *down,
                  double *slopes, double *nextSlopes, double *bins)
{
    addTents(count - 1, row, row + 1, next, up, slopes, slopes + 1, nextSlopes, bins);
    addTents(count - 2, row + 1, next, next + 1, down, slopes + 1, nextSlopes, nextSlopes + 1, bins);
}

void addCorners(size_t count, const double *places, double *slopes, double *bins)
{
    int bin[blockSize];
    double first[blockSize], second[blockSize], third[blockSize], last[blockSize];
    for (size_t start = 0; start < count; start += blockSize) {
        const int n = count - start < blockSize ? int(count - start) : blockSize;
        const double *place = places + start;
        double *slope = slopes + start;
        for (int j = 0; j < n; ++j) {
            const Share share = kink(place[j], slope[j]);
            bin[j] = share.bin;
            first[j] = share.first;
            second[j] = share.second;
            third[j] = share.third;
            last[j] = share.last;
        }
        for (int j = 0; j < n; ++j)
            slope[j] = 0;
        for (int j = 0; j < n; ++j)
            addShare({bin[j], first[j], second[j], third[j], last[j]}, bins);
    }
}

/// One stage of radix 4 of the autosorting transform without bit reversal (Stockham): n points left, `stride`
/// sequences, a multiple of Block.
template <size_t Block>
POWDER_APART void stage4(const Twiddles &t, size_t n, size_t stride, const double *__restrict xr,
                         const double *__restrict xi, double *__restrict yr, double *__restrict yi)
{
    const size_t quarter = n / 4, step = t.size / n, far = stride * quarter;
    for (size_t p = 0; p < quarter; ++p) {
        const double c1 = t.cosines[p * step], s1 = t.sines[p * step];
        const double c2 = t.cosines[2 * p * step], s2 = t.sines[2 * p * step];
        const double c3 = t.cosines[3 * p * step], s3 = t.sines[3 * p * step];
        for (size_t start = 0; start < stride; start += Block) {
            const double *ar = xr + stride * p + start, *br = ar + far, *cr = br + far, *dr = cr + far;
            const double *ai = xi + stride * p + start, *bi = ai + far, *ci = bi + far, *di = ci + far;
            double *r = yr + stride * 4 * p + start, *i = yi + stride * 4 * p + start;
            for (size_t q = 0; q < Block; ++q) {
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
}

/// The same of radix 8, which passes over the numbers less often.
template <size_t Block>
POWDER_APART void stage8(const Twiddles &t, size_t n, size_t stride, const double *__restrict xr,
                         const double *__restrict xi, double *__restrict yr, double *__restrict yi)
{
    constexpr double root = 0.7071067811865476;
    const size_t eighth = n / 8, step = t.size / n, far = stride * eighth;
    for (size_t p = 0; p < eighth; ++p) {
        double c[8], s[8];
        for (size_t k = 1; k < 8; ++k) {
            c[k] = t.cosines[k * p * step];
            s[k] = t.sines[k * p * step];
        }
        for (size_t start = 0; start < stride; start += Block) {
            const double *xR = xr + stride * p + start, *xI = xi + stride * p + start;
            double *r = yr + stride * 8 * p + start, *i = yi + stride * 8 * p + start;
            for (size_t q = 0; q < Block; ++q) {
                // Sums and differences of points that lie half of them apart; of these, those a quarter apart.
                const double sum0R = xR[q] + xR[q + 4 * far], sum0I = xI[q] + xI[q + 4 * far];
                const double off0R = xR[q] - xR[q + 4 * far], off0I = xI[q] - xI[q + 4 * far];
                const double sum1R = xR[q + far] + xR[q + 5 * far], sum1I = xI[q + far] + xI[q + 5 * far];
                const double off1R = xR[q + far] - xR[q + 5 * far], off1I = xI[q + far] - xI[q + 5 * far];
                const double sum2R = xR[q + 2 * far] + xR[q + 6 * far], sum2I = xI[q + 2 * far] + xI[q + 6 * far];
                const double off2R = xR[q + 2 * far] - xR[q + 6 * far], off2I = xI[q + 2 * far] - xI[q + 6 * far];
                const double sum3R = xR[q + 3 * far] + xR[q + 7 * far], sum3I = xI[q + 3 * far] + xI[q + 7 * far];
                const double off3R = xR[q + 3 * far] - xR[q + 7 * far], off3I = xI[q + 3 * far] - xI[q + 7 * far];

                const double evenR = sum0R + sum2R, evenI = sum0I + sum2I, oddR = sum1R + sum3R, oddI = sum1I + sum3I;
                const auto write = [&](size_t k, double re, double im) {
                    r[q + k * stride] = re * c[k] + im * s[k];
                    i[q + k * stride] = im * c[k] - re * s[k];
                };
                r[q] = evenR + oddR;
                i[q] = evenI + oddI;
                write(4, evenR - oddR, evenI - oddI);
                const double acrossR = sum0R - sum2R, acrossI = sum0I - sum2I;
                const double turnedR = sum1I - sum3I, turnedI = sum3R - sum1R; // -i (sum1 - sum3)
                write(2, acrossR + turnedR, acrossI + turnedI);
                write(6, acrossR - turnedR, acrossI - turnedI);

                const double aR = off0R + off2I, aI = off0I - off2R; // off0 - i off2
                const double bR = off0R - off2I, bI = off0I + off2R; // off0 + i off2
                const double uR = off1R + off3I, uI = off1I - off3R;
                const double vR = off1R - off3I, vI = off1I + off3R;
                const double dR = root * (uR + uI), dI = root * (uI - uR); // an eighth of a turn
                const double eR = root * (vI - vR), eI = -root * (vI + vR); // three of them
                write(1, aR + dR, aI + dI);
                write(5, aR - dR, aI - dI);
                write(3, bR + eR, bI + eI);
                write(7, bR - eR, bI - eI);
            }
        }
    }
}

POWDER_APART void stage2(const Twiddles &t, size_t n, size_t stride, const double *__restrict xr,
                         const double *__restrict xi, double *__restrict yr, double *__restrict yi)
{
    const size_t half = n / 2, step = t.size / n;
    for (size_t p = 0; p < half; ++p) {
        const double c = t.cosines[p * step], s = t.sines[p * step];
        const double *ar = xr + stride * p, *br = ar + stride * half;
        const double *ai = xi + stride * p, *bi = ai + stride * half;
        double *r = yr + stride * 2 * p, *i = yi + stride * 2 * p;
        for (size_t q = 0; q < stride; ++q) {
            const double differenceR = ar[q] - br[q], differenceI = ai[q] - bi[q];
            r[q] = ar[q] + br[q];
            i[q] = ai[q] + bi[q];
            r[q + stride] = differenceR * c + differenceI * s;
            i[q + stride] = differenceI * c - differenceR * s;
        }
    }
}

/// Last stages, of three and of five points.
POWDER_APART void stage3(size_t stride, const double *__restrict xr, const double *__restrict xi, double *__restrict yr,
                         double *__restrict yi)
{
    constexpr double sine = 0.8660254037844386;
    for (size_t q = 0; q < stride; ++q) {
        const double sumR = xr[q + stride] + xr[q + 2 * stride], sumI = xi[q + stride] + xi[q + 2 * stride];
        const double turnedR = sine * (xi[q + stride] - xi[q + 2 * stride]),
                     turnedI = sine * (xr[q + 2 * stride] - xr[q + stride]);
        const double middleR = xr[q] - 0.5 * sumR, middleI = xi[q] - 0.5 * sumI;
        yr[q] = xr[q] + sumR;
        yi[q] = xi[q] + sumI;
        yr[q + stride] = middleR + turnedR;
        yi[q + stride] = middleI + turnedI;
        yr[q + 2 * stride] = middleR - turnedR;
        yi[q + 2 * stride] = middleI - turnedI;
    }
}

POWDER_APART void stage5(size_t stride, const double *__restrict xr, const double *__restrict xi, double *__restrict yr,
                         double *__restrict yi)
{
    constexpr double c1 = 0.30901699437494745, s1 = 0.9510565162951535, c2 = -0.8090169943749475,
                     s2 = 0.5877852522924731;
    const double *ar = xr + stride, *br = ar + stride, *cr = br + stride, *dr = cr + stride;
    const double *ai = xi + stride, *bi = ai + stride, *ci = bi + stride, *di = ci + stride;
    for (size_t q = 0; q < stride; ++q) {
        const double outerR = ar[q] + dr[q], outerI = ai[q] + di[q], innerR = br[q] + cr[q], innerI = bi[q] + ci[q];
        const double acrossR = ar[q] - dr[q], acrossI = ai[q] - di[q], betweenR = br[q] - cr[q],
                     betweenI = bi[q] - ci[q];
        yr[q] = xr[q] + (outerR + innerR);
        yi[q] = xi[q] + (outerI + innerI);
        const double oneR = xr[q] + (c1 * outerR + c2 * innerR), oneI = xi[q] + (c1 * outerI + c2 * innerI);
        const double oneTurnedR = s1 * acrossI + s2 * betweenI, oneTurnedI = s1 * acrossR + s2 * betweenR;
        yr[q + stride] = oneR + oneTurnedR;
        yi[q + stride] = oneI - oneTurnedI;
        yr[q + 4 * stride] = oneR - oneTurnedR;
        yi[q + 4 * stride] = oneI + oneTurnedI;
        const double twoR = xr[q] + (c2 * outerR + c1 * innerR), twoI = xi[q] + (c2 * outerI + c1 * innerI);
        const double twoTurnedR = s2 * acrossI - s1 * betweenI, twoTurnedI = s2 * acrossR - s1 * betweenR;
        yr[q + 2 * stride] = twoR + twoTurnedR;
        yi[q + 2 * stride] = twoI - twoTurnedI;
        yr[q + 3 * stride] = twoR - twoTurnedR;
        yi[q + 3 * stride] = twoI + twoTurnedI;
    }
}

/// The same for one sequence, in the order that suits vectors.
POWDER_APART void firstStage4(const Twiddles &t, const double *__restrict xr, const double *__restrict xi,
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
    const auto exchange = [&] {
        double *const r = r0, *const i = i0;
        r0 = r1;
        i0 = i1;
        r1 = r;
        i1 = i;
        swapped = !swapped;
    };
    size_t n = t.size, stride = batch;
    if (stride == 1 && n % 4 == 0) {
        firstStage4(t, r0, i0, r1, i1);
        n /= 4, stride *= 4, exchange();
    }
    // 8 and 2 in two stages would be no faster than 4 and 4.
    for (; n % 8 == 0 && n % 32 != 16; n /= 8, stride *= 8, exchange())
        (stride % 16 == 0 ? stage8<16> : stage8<4>)(t, n, stride, r0, i0, r1, i1);
    for (; n % 4 == 0; n /= 4, stride *= 4, exchange())
        (stride % 16 == 0 ? stage4<16> : stage4<4>)(t, n, stride, r0, i0, r1, i1);
    if (n % 2 == 0) {
        stage2(t, n, stride, r0, i0, r1, i1);
        n /= 2;
        stride *= 2;
        exchange();
    }
    if (n == 3 || n == 5) {
        (n == 3 ? stage3 : stage5)(stride, r0, i0, r1, i1);
        exchange();
    }
    return swapped;
}

bool transform(const Twiddles *twiddles, size_t batch, double *re, double *im, double *otherRe, double *otherIm)
{
    return stages(*twiddles, batch, re, im, otherRe, otherIm);
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
    const size_t steps = twiddles->size, half = steps / 2;
    const size_t length = steps * L + arrayGap;
    double *re = work, *im = work + length;
    for (size_t j = 0; j < half; ++j) {
        const double C1 = twiddles->cosines[j], S1 = twiddles->sines[j];
        const double C2 = twiddles->cosines[2 * j], S2 = twiddles->sines[2 * j];
        const size_t three = 3 * j < steps ? 3 * j : 3 * j - steps, four = 4 * j < steps ? 4 * j : 4 * j - steps;
        const double C3 = twiddles->cosines[three], S3 = twiddles->sines[three];
        const double C4 = twiddles->cosines[four], S4 = twiddles->sines[four];
        double *r0 = re + j * L, *i0 = im + j * L, *r1 = re + (j + half) * L, *i1 = im + (j + half) * L;
        for (int l = 0; l < L; ++l) {
            // Half a turn later the odd harmonics have the other sign.
            const double even = (C2 * cosine2[l] + S2 * sine2[l]) + (C4 * cosine4[l] + S4 * sine4[l]);
            const double odd = (C1 * cosine1[l] + S1 * sine1[l]) + (C3 * cosine3[l] + S3 * sine3[l]);
            cosineAndSine(even + odd, r0[l], i0[l]);
            cosineAndSine(even - odd, r1[l], i1[l]);
        }
    }
    double *other = work + 2 * length;
    if (stages(*twiddles, L, re, im, other, other + length)) {
        re = other;
        im = other + length;
    }
    const double norm = 1 / (double(steps) * double(steps));
    for (size_t i = 0; i < steps * L; ++i)
        re[i] = norm * (re[i] * re[i] + im[i] * im[i]);
    for (size_t k = 0; k < steps; k += 4) {
        const double *from = re + k * L;
        for (size_t l = 0; l < size_t(L); ++l) {
            double *to = weights + l * steps + k;
            for (size_t i = 0; i < 4; ++i)
                to[i] = from[i * L + l];
        }
    }
}

POWDER_APART void addRows(const Share &share, size_t count, const double *__restrict values, double *__restrict bins)
{
    double *row = bins + size_t(share.bin) * count, *next = row + count, *third = next + count, *last = third + count;
    for (size_t k = 0; k < count; ++k) {
        row[k] += share.first * values[k];
        next[k] += share.second * values[k];
        third[k] += share.third * values[k];
        last[k] += share.last * values[k];
    }
}

void addWeightedTriangle(const double *corners, double part, size_t count, const double *__restrict w0,
                         const double *__restrict w1, const double *__restrict w2, double *__restrict slopes0,
                         double *__restrict slopes1, double *__restrict slopes2, double *__restrict sum,
                         double *__restrict bins)
{
    const Tent t = tent(corners[0], corners[1], corners[2]);
    if (t.isSteep) {
        for (size_t k = 0; k < count; ++k)
            sum[k] = w0[k] + w1[k] + w2[k];
        return addSteep(t, part, [&](const Share &share) { addRows(share, count, sum, bins); });
    }
    const double c0 = part * change(t, corners[0]), c1 = part * change(t, corners[1]),
                 c2 = part * change(t, corners[2]);
    for (size_t k = 0; k < count; ++k) {
        const double all = w0[k] + w1[k] + w2[k];
        slopes0[k] += c0 * all;
        slopes1[k] += c1 * all;
        slopes2[k] += c2 * all;
    }
}

void addWeightedCorner(double place, size_t count, double *__restrict slopes, double *__restrict bins)
{
    addRows(kink(place, 1), count, slopes, bins);
    for (size_t k = 0; k < count; ++k)
        slopes[k] = 0;
}

} // namespace

extern const Kernels kernels;
const Kernels kernels = {directions, solidAngles,         frequencies,       addTriangles, addCorners,
                         sidebands,  addWeightedTriangle, addWeightedCorner, transform};

} // namespace Workbench::Powder::POWDER_INSTRUCTION_SET
