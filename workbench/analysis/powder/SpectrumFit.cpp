// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/SpectrumFit.h"

#include "analysis/powder/Trigonometry.h"

#include <Eigen/Dense>
#include <unsupported/Eigen/NonLinearOptimization>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Workbench::Powder {

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

void check(const Measured &measured, size_t parameters)
{
    if (measured.ppm.size() != measured.intensity.size())
        throw std::invalid_argument("The measured spectrum has not as many intensities as positions");
    if (measured.ppm.size() < parameters + 8)
        throw std::invalid_argument("The measured spectrum has too few points for a fit");
    const auto isFinite = [](double value) { return std::isfinite(value); };
    if (!std::all_of(measured.ppm.begin(), measured.ppm.end(), isFinite)
        || !std::all_of(measured.intensity.begin(), measured.intensity.end(), isFinite))
        throw std::invalid_argument("The measured spectrum holds a value that is not a number");
    const auto [low, high] = std::minmax_element(measured.ppm.begin(), measured.ppm.end());
    if (!(*high > *low))
        throw std::invalid_argument("The measured points lie all at the same place");
    if (std::all_of(measured.intensity.begin(), measured.intensity.end(), [](double value) { return value == 0; }))
        throw std::invalid_argument("The measured spectrum is zero everywhere");
}

/// The calculated spectrum as a function of what moves: shift in ppm, logarithms of widths and of the factor.
class Model {
public:
    Model(std::span<const Site> sites, const Conditions &conditions, const LineShape &shape, const Measured &measured,
          const FitChoice &choice, double reach, const Progress &progress)
        : m_sites(sites),
          m_conditions(conditions),
          m_measured(measured),
          m_choice(choice),
          m_progress(progress),
          m_start(shape)
    {
        const auto [low, high] = std::minmax_element(measured.ppm.begin(), measured.ppm.end());
        // The curve is computed once for a width and a factor, on an axis that is long enough for all shifts.
        m_axis.first = *low - 1.5 * reach;
        m_axis.last = *high + 1.5 * reach;
        const double width = fullWidth(shape) / conditions.larmor;
        const double step = std::min((*high - *low) / double(measured.ppm.size()), width / 4);
        m_axis.points = size_t(std::clamp((m_axis.last - m_axis.first) / step, 512.0, 65536.0));
    }

    const Axis &axis() const { return m_axis; }

    LineShape shape(const VectorXd &x) const
    {
        LineShape shape = m_start;
        int i = m_choice.reference ? 1 : 0;
        if (m_choice.lorentzian)
            shape.lorentzian = m_start.lorentzian * exponential(x[i++]);
        if (m_choice.gaussian)
            shape.gaussian = m_start.gaussian * exponential(x[i++]);
        // What cannot be seen is none.
        for (double *width : {&shape.lorentzian, &shape.gaussian}) {
            if (*width < 1e-3 * fullWidth(m_start))
                *width = 0;
        }
        return shape;
    }
    double shift(const VectorXd &x) const { return m_choice.reference ? x[0] : 0; }
    double scale(const VectorXd &x) const { return m_choice.scale ? exponential(x[x.size() - 1]) : 1; }

    /// Decides the number of directions, for all calls alike: the curve must change smoothly.
    void prepare()
    {
        Accuracy accuracy;
        accuracy.tolerance = 3e-4;
        double directions = 1;
        for (const SiteCurve &curve : compute(m_start, 1, accuracy).sites)
            directions = std::max(directions, curve.directions);
        m_accuracy.directions = directions;
    }

    /// At the measured points, in calculated intensity.
    VectorXd values(const VectorXd &x)
    {
        const LineShape width = shape(x);
        const double factor = scale(x);
        if (m_curve.empty() || width.lorentzian != m_width.lorentzian || width.gaussian != m_width.gaussian
            || factor != m_factor) {
            m_curve = compute(width, factor, m_accuracy).sum;
            m_width = width;
            m_factor = factor;
        }
        return at(m_curve, shift(x));
    }

    /// A curve of the model's axis, moved and read at the measured points: cubic interpolation.
    VectorXd at(const std::vector<double> &curve, double move) const
    {
        VectorXd result(ptrdiff_t(m_measured.ppm.size()));
        for (size_t i = 0; i < m_measured.ppm.size(); ++i) {
            const double position = (m_measured.ppm[i] - move - m_axis.first) / m_axis.step();
            const double below = std::floor(position);
            double value = 0;
            if (below >= 1 && below + 3 <= double(curve.size())) {
                const double *p = curve.data() + size_t(below);
                const double t = position - below;
                value = -p[-1] * t * (t - 1) * (t - 2) / 6 + p[0] * (t + 1) * (t - 1) * (t - 2) / 2
                    - p[1] * (t + 1) * t * (t - 2) / 2 + p[2] * (t + 1) * t * (t - 1) / 6;
            }
            result[ptrdiff_t(i)] = value;
        }
        return result;
    }

    /// The curve that the search for the reference moves about: wide lines, so that near counts.
    std::vector<double> blurred()
    {
        LineShape wide = m_start;
        wide.gaussian = std::max(4 * fullWidth(m_start), 4 * m_axis.step() * m_conditions.larmor);
        Accuracy accuracy;
        accuracy.tolerance = 0.02;
        return compute(wide, 1, accuracy).sum;
    }

private:
    Spectrum compute(const LineShape &shape, double factor, const Accuracy &accuracy)
    {
        std::vector<Site> sites(m_sites.begin(), m_sites.end());
        for (Site &site : sites) {
            if (site.coupling) {
                for (double &element : *site.coupling)
                    element *= factor;
            }
        }
        // How many calls there will be nobody knows: the part done approaches 1.
        const Progress progress =
            m_progress ? [this](double) { return m_progress(double(m_calls) / (double(m_calls) + 20)); } : Progress();
        auto result = spectrum(sites, m_conditions, shape, m_axis, accuracy, progress);
        if (!result)
            throw Stopped();
        ++m_calls;
        return *result;
    }

    std::span<const Site> m_sites;
    const Conditions &m_conditions;
    const Measured &m_measured;
    FitChoice m_choice;
    const Progress &m_progress;
    LineShape m_start;
    Axis m_axis;
    Accuracy m_accuracy;
    int m_calls = 0;
    std::vector<double> m_curve; ///< of the last call
    LineShape m_width;
    double m_factor = 1;
};

double bestIntensity(const VectorXd &model, const VectorXd &measured)
{
    const double norm = model.squaredNorm();
    return norm > 0 ? model.dot(measured) / norm : 0;
}

/// What is left of the measured points, the intensity being the best for each set of parameters.
struct Residuals {
    Model &model;
    const VectorXd &measured;
    const VectorXd &differences; ///< by how much parameters are moved for the derivatives

    int operator()(const VectorXd &x, VectorXd &residuals) const
    {
        const VectorXd curve = model.values(x);
        residuals = measured - bestIntensity(curve, measured) * curve;
        return 0;
    }
    int df(const VectorXd &x, MatrixXd &jacobian) const
    {
        VectorXd above, below;
        jacobian.resize(measured.size(), x.size());
        for (ptrdiff_t i = 0; i < x.size(); ++i) {
            VectorXd moved = x;
            moved[i] = x[i] + differences[i];
            (*this)(moved, above);
            moved[i] = x[i] - differences[i];
            (*this)(moved, below);
            jacobian.col(i) = (above - below) / (2 * differences[i]);
        }
        return 0;
    }
    ptrdiff_t inputs() const { return differences.size(); }
    ptrdiff_t values() const { return measured.size(); }
};

/// The move of the calculated curve that explains most of the measured one.
double bestShift(Model &model, const VectorXd &measured, double width, double reach)
{
    const std::vector<double> curve = model.blurred();
    const int count = int(std::clamp(std::ceil(reach / width), 1.0, 2000.0));
    double best = 0, most = -1;
    for (int i = -count; i <= count; ++i) {
        const double move = reach * i / count;
        const VectorXd values = model.at(curve, move);
        const double norm = values.squaredNorm(), product = values.dot(measured);
        const double explained = norm > 0 && product > 0 ? product * product / norm : 0;
        if (explained > most) {
            most = explained;
            best = move;
        }
    }
    return best;
}

SpectrumFit fit(Model &model, const VectorXd &measured, const FitChoice &choice, const Conditions &conditions,
                const LineShape &shape, double reach)
{
    const int count = int(choice.reference) + int(choice.lorentzian) + int(choice.gaussian) + int(choice.scale);
    VectorXd x = VectorXd::Zero(count), differences = VectorXd::Constant(count, 0.02);
    const double width = fullWidth(shape) / conditions.larmor;
    if (choice.reference) {
        x[0] = bestShift(model, measured, width, reach);
        differences[0] = 0.02 * width;
    }
    if (choice.scale)
        differences[count - 1] = 2e-3;
    model.prepare();

    SpectrumFit result;
    Residuals residuals{model, measured, differences};
    if (count > 0) {
        Eigen::LevenbergMarquardt<Residuals> method(residuals);
        method.parameters.ftol = method.parameters.xtol = 1e-7;
        method.parameters.maxfev = 60;
        const auto status = method.minimize(x);
        result.steps = int(method.iter);
        result.converged = status >= Eigen::LevenbergMarquardtSpace::RelativeReductionTooSmall
            && status <= Eigen::LevenbergMarquardtSpace::CosinusTooSmall;
    } else {
        result.converged = true;
    }

    const VectorXd curve = model.values(x);
    result.intensity = bestIntensity(curve, measured);
    const VectorXd fitted = result.intensity * curve;
    result.curve.assign(fitted.begin(), fitted.end());
    const double variance = (measured - fitted).squaredNorm() / double(measured.size() - count - 1);
    result.deviation = std::sqrt(variance) / measured.cwiseAbs().maxCoeff();
    VectorXd errors = VectorXd::Zero(count);
    if (count > 0) {
        MatrixXd jacobian;
        residuals.df(x, jacobian);
        const MatrixXd covariance =
            variance * (jacobian.transpose() * jacobian).completeOrthogonalDecomposition().pseudoInverse();
        errors = covariance.diagonal().cwiseMax(0).cwiseSqrt();
    }
    const LineShape final = model.shape(x);
    result.lorentzian.value = final.lorentzian;
    result.gaussian.value = final.gaussian;
    result.scale.value = model.scale(x);
    result.reference.value = model.shift(x);
    int i = 0;
    // Errors of logarithms are relative ones.
    if (choice.reference)
        result.reference.error = errors[i++];
    if (choice.lorentzian)
        result.lorentzian.error = final.lorentzian * errors[i++];
    if (choice.gaussian)
        result.gaussian.error = final.gaussian * errors[i++];
    if (choice.scale)
        result.scale.error = result.scale.value * errors[i++];
    return result;
}

} // namespace

std::optional<SpectrumFit> fitSpectrum(std::span<const Site> sites, const Conditions &conditions,
                                       const LineShape &shape, const Measured &measured, const FitChoice &choice,
                                       double reach, const Progress &progress)
{
    check(measured, 4);
    check(conditions);
    check(shape);
    if (sites.empty())
        throw std::invalid_argument("There are no sites");
    if (!(reach >= 0 && reach <= 1e6))
        throw std::invalid_argument("The reference must be looked for within 0 to 1000000 ppm");
    for (const Site &site : sites)
        check(site, conditions);
    // A width that is to move starts above zero.
    LineShape start = shape;
    const double least = 1e-3 * conditions.larmor;
    if (choice.lorentzian)
        start.lorentzian = std::max(start.lorentzian, least);
    if (choice.gaussian && start.gaussian < least)
        start.gaussian = std::max(0.5 * start.lorentzian, least);
    if (!(fullWidth(start) > 0))
        start.gaussian = least;
    const VectorXd intensities =
        Eigen::Map<const VectorXd>(measured.intensity.data(), ptrdiff_t(measured.intensity.size()));
    try {
        Model model(sites, conditions, start, measured, choice, choice.reference ? reach : 0, progress);
        return fit(model, intensities, choice, conditions, start, reach);
    } catch (const Stopped &) {
        return std::nullopt;
    }
}

} // namespace Workbench::Powder
