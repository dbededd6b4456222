// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/SpectrumFit.h"

#include "analysis/powder/GslErrors.h"
#include "analysis/powder/Trigonometry.h"

#include <gsl/gsl_multifit_nlinear.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>
#include <numeric>
#include <stdexcept>

namespace Workbench::Powder {

namespace {

using Values = std::vector<double>;

double dot(const Values &a, const Values &b)
{
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

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
          const FitChoice &choice, const Moves &moves, double step, const Progress &progress, int &calls)
        : m_sites(sites),
          m_conditions(conditions),
          m_measured(measured),
          m_choice(choice),
          m_progress(progress),
          m_calls(calls),
          m_start(shape)
    {
        const auto [low, high] = std::minmax_element(measured.ppm.begin(), measured.ppm.end());
        // The curve is computed once for a width and a factor, on an axis that is long enough for all moves.
        const double width = fullWidth(shape) / conditions.larmor;
        m_axis.first = *low - moves.to - width;
        m_axis.last = *high - moves.from + width;
        m_axis.points = size_t(std::clamp((m_axis.last - m_axis.first) / step, 512.0, 65536.0));
    }

    const Axis &axis() const { return m_axis; }

    LineShape shape(std::span<const double> x) const
    {
        constexpr double widest = 1e8; // Hz, farther than any step should lead
        LineShape shape = m_start;
        size_t i = m_choice.reference ? 1 : 0;
        if (m_choice.lorentzian)
            shape.lorentzian = std::min(m_start.lorentzian * exponential(x[i++]), widest);
        if (m_choice.gaussian)
            shape.gaussian = std::min(m_start.gaussian * exponential(x[i++]), widest);
        // What cannot be seen is none.
        for (double *width : {&shape.lorentzian, &shape.gaussian}) {
            if (*width < 1e-3 * fullWidth(m_start))
                *width = 0;
        }
        return shape;
    }
    double shift(std::span<const double> x) const { return m_choice.reference ? x[0] : 0; }
    double scale(std::span<const double> x) const { return m_choice.scale ? exponential(x.back()) : 1; }

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
    Values values(std::span<const double> x)
    {
        const LineShape width = shape(x);
        const double factor = scale(x);
        if (m_curve.empty() || width.lorentzian != m_width.lorentzian || width.gaussian != m_width.gaussian
            || factor != m_factor) {
            m_curve = compute(width, factor, m_accuracy).sum;
            m_width = width;
            m_factor = factor;
        }
        return at(m_curve, shift(x), m_measured.ppm);
    }

    /// A curve of the model's axis, moved and read at these points: cubic interpolation.
    Values at(const Values &curve, double move, const Values &ppm) const
    {
        Values result(ppm.size());
        for (size_t i = 0; i < ppm.size(); ++i) {
            const double position = (ppm[i] - move - m_axis.first) / m_axis.step();
            const double below = std::floor(position);
            double value = 0;
            if (below >= 1 && below + 3 <= double(curve.size())) {
                const double *p = curve.data() + size_t(below);
                const double t = position - below;
                value = -p[-1] * t * (t - 1) * (t - 2) / 6 + p[0] * (t + 1) * (t - 1) * (t - 2) / 2
                    - p[1] * (t + 1) * t * (t - 2) / 2 + p[2] * (t + 1) * t * (t - 1) / 6;
            }
            result[i] = value;
        }
        return result;
    }

    /// The curve that the search for a start moves about.
    Values rough()
    {
        Accuracy accuracy;
        accuracy.tolerance = 0.02;
        return compute(m_start, 1, accuracy).sum;
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
    int &m_calls; ///< of all models of a fit
    LineShape m_start;
    Axis m_axis;
    Accuracy m_accuracy;
    Values m_curve; ///< of the last call
    LineShape m_width;
    double m_factor = 1;
};

double bestIntensity(const Values &model, const Values &measured)
{
    const double norm = dot(model, model);
    return norm > 0 ? dot(model, measured) / norm : 0;
}

/// What is left of the measured points, the intensity being the best for each set of parameters.
class Residuals {
public:
    Residuals(Model &model, const Values &measured, const Values &differences)
        : m_model(model), m_measured(measured), m_differences(differences)
    {
        m_system.f = [](const gsl_vector *x, void *self, gsl_vector *residuals) {
            return static_cast<Residuals *>(self)->answer([=](Residuals &r) { r.write(x, residuals); });
        };
        m_system.df = [](const gsl_vector *x, void *self, gsl_matrix *jacobian) {
            return static_cast<Residuals *>(self)->answer([=](Residuals &r) { r.write(x, jacobian); });
        };
        m_system.fvv = nullptr;
        m_system.n = measured.size();
        m_system.p = differences.size();
        m_system.params = this;
    }
    Residuals(const Residuals &) = delete;
    Residuals &operator=(const Residuals &) = delete;

    gsl_multifit_nlinear_fdf *system() { return &m_system; }

    /// What went wrong in a call, which the library cannot hand on.
    void rethrow() const
    {
        if (m_error)
            std::rethrow_exception(m_error);
    }

private:
    template <typename Call>
    int answer(Call call)
    {
        try {
            call(*this);
            return GSL_SUCCESS;
        } catch (...) {
            m_error = std::current_exception();
            return GSL_EBADFUNC;
        }
    }

    Values at(const Values &x) const
    {
        Values residuals = m_model.values(x);
        const double intensity = bestIntensity(residuals, m_measured);
        for (size_t i = 0; i < residuals.size(); ++i)
            residuals[i] = m_measured[i] - intensity * residuals[i];
        return residuals;
    }
    void write(const gsl_vector *x, gsl_vector *residuals) const
    {
        const Values values = at(Values(x->data, x->data + x->size));
        for (size_t i = 0; i < values.size(); ++i)
            gsl_vector_set(residuals, i, values[i]);
    }
    void write(const gsl_vector *x, gsl_matrix *jacobian) const
    {
        for (size_t p = 0; p < m_differences.size(); ++p) {
            Values moved(x->data, x->data + x->size);
            const double place = moved[p];
            moved[p] = place + m_differences[p];
            const Values above = at(moved);
            moved[p] = place - m_differences[p];
            const Values below = at(moved);
            for (size_t i = 0; i < above.size(); ++i)
                gsl_matrix_set(jacobian, i, p, (above[i] - below[i]) / (2 * m_differences[p]));
        }
    }

    Model &m_model;
    const Values &m_measured;
    const Values &m_differences; ///< by how much parameters are moved for the derivatives
    gsl_multifit_nlinear_fdf m_system{};
    std::exception_ptr m_error;
};

struct Minimum {
    Values x;
    Values errors; ///< per unit of the residuals' standard deviation
    int steps = 0;
    bool converged = false;
};

/// The method of Levenberg and Marquardt, from a start that is near.
Minimum minimise(Model &model, const Values &measured, const Values &start, const Values &differences)
{
    returnGslErrors();
    Residuals residuals(model, measured, differences);
    const gsl_multifit_nlinear_parameters parameters = gsl_multifit_nlinear_default_parameters();
    const std::unique_ptr<gsl_multifit_nlinear_workspace, decltype(&gsl_multifit_nlinear_free)> workspace(
        gsl_multifit_nlinear_alloc(gsl_multifit_nlinear_trust, &parameters, measured.size(), start.size()),
        gsl_multifit_nlinear_free);
    const gsl_vector_const_view first = gsl_vector_const_view_array(start.data(), start.size());
    gsl_multifit_nlinear_init(&first.vector, residuals.system(), workspace.get());
    residuals.rethrow();
    int reason = 0;
    const int status = gsl_multifit_nlinear_driver(60, 1e-7, 1e-9, 1e-9, nullptr, nullptr, &reason, workspace.get());
    residuals.rethrow();

    Minimum result;
    const gsl_vector *x = gsl_multifit_nlinear_position(workspace.get());
    result.x.assign(x->data, x->data + x->size);
    result.steps = int(gsl_multifit_nlinear_niter(workspace.get()));
    // No progress is what rounding leaves at the minimum.
    result.converged = status == GSL_SUCCESS || status == GSL_ENOPROG;
    Values covariance(start.size() * start.size());
    gsl_matrix_view matrix = gsl_matrix_view_array(covariance.data(), start.size(), start.size());
    gsl_multifit_nlinear_covar(gsl_multifit_nlinear_jac(workspace.get()), 1e-12, &matrix.matrix);
    for (size_t i = 0; i < start.size(); ++i)
        result.errors.push_back(std::sqrt(std::max(covariance[i * start.size() + i], 0.0)));
    return result;
}

/// How a fit begins.
struct Start {
    LineShape shape;
    double reference = 0;
    double explained = -1; ///< part of the measured squares
};

/// The move of the calculated curve that explains most of the measured one: in steps of half a width, over points a
/// quarter of it apart.
Start bestMove(Model &model, const Measured &measured, const LineShape &shape, double width, const Moves &moves)
{
    Measured part;
    const auto [low, high] = std::minmax_element(measured.ppm.begin(), measured.ppm.end());
    const double spacing = (*high - *low) / double(measured.ppm.size());
    const size_t every = size_t(std::clamp(width / 4 / spacing, 1.0, double(measured.ppm.size() / 64 + 1)));
    for (size_t i = 0; i < measured.ppm.size(); i += every) {
        part.ppm.push_back(measured.ppm[i]);
        part.intensity.push_back(measured.intensity[i]);
    }
    const Values curve = model.rough();
    const int count = int(std::clamp(std::ceil(2 * (moves.to - moves.from) / width), 1.0, 4000.0));
    Start best;
    for (int i = 0; i <= count; ++i) {
        const double move = moves.from + (moves.to - moves.from) * i / count;
        const Values values = model.at(curve, move, part.ppm);
        const double norm = dot(values, values), product = dot(values, part.intensity);
        const double explained = norm > 0 && product > 0 ? product * product / norm : 0;
        if (explained > best.explained)
            best = {shape, move, explained};
    }
    best.explained /= dot(part.intensity, part.intensity);
    return best;
}

/// Factors on the widths: from lines as narrow as the measured points can show to a quarter of their range. Far from
/// the measured width the least squares have minima of their own.
Values trialFactors(const Measured &measured, double width)
{
    const auto [low, high] = std::minmax_element(measured.ppm.begin(), measured.ppm.end());
    const double range = *high - *low, narrowest = 2 * range / double(measured.ppm.size());
    Values factors;
    if (width >= narrowest)
        factors.push_back(1);
    for (double trial = narrowest; trial <= range / 4; trial *= 4)
        factors.push_back(trial / width);
    return factors;
}

SpectrumFit fit(Model &model, const Values &measured, const FitChoice &choice, const Conditions &conditions,
                const Start &start)
{
    const size_t count =
        size_t(choice.reference) + size_t(choice.lorentzian) + size_t(choice.gaussian) + size_t(choice.scale);
    Values x(count, 0.0), differences(count, 0.02), errors;
    if (choice.reference) {
        x[0] = start.reference;
        differences[0] = 0.02 * fullWidth(start.shape) / conditions.larmor;
    }
    if (choice.scale)
        differences[count - 1] = 2e-3;
    model.prepare();

    SpectrumFit result;
    result.converged = true;
    if (count > 0) {
        const Minimum minimum = minimise(model, measured, x, differences);
        x = minimum.x;
        errors = minimum.errors;
        result.steps = minimum.steps;
        result.converged = minimum.converged;
    }

    result.curve = model.values(x);
    result.intensity = bestIntensity(result.curve, measured);
    double squares = 0, highest = 0;
    for (size_t i = 0; i < measured.size(); ++i) {
        result.curve[i] *= result.intensity;
        squares += (measured[i] - result.curve[i]) * (measured[i] - result.curve[i]);
        highest = std::max(highest, std::abs(measured[i]));
    }
    const double deviation = std::sqrt(squares / double(measured.size() - count - 1));
    result.deviation = deviation / highest;
    for (double &error : errors)
        error *= deviation;
    const LineShape final = model.shape(x);
    result.lorentzian.value = final.lorentzian;
    result.gaussian.value = final.gaussian;
    result.scale.value = model.scale(x);
    result.reference.value = model.shift(x);
    size_t i = 0;
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
                                       const Moves &moves, const Progress &progress)
{
    check(measured, 4);
    check(conditions);
    check(shape);
    if (sites.empty())
        throw std::invalid_argument("There are no sites");
    if (!(moves.from >= -1e6 && moves.from <= moves.to && moves.to <= 1e6))
        throw std::invalid_argument("The reference must be looked for within -1000000 to 1000000 ppm");
    for (const Site &site : sites)
        check(site, conditions);
    // A width that is to move starts above zero.
    LineShape given = shape;
    const double least = 1e-3 * conditions.larmor;
    if (choice.lorentzian)
        given.lorentzian = std::max(given.lorentzian, least);
    if (choice.gaussian && given.gaussian < least)
        given.gaussian = std::max(0.5 * given.lorentzian, least);
    if (!(fullWidth(given) > 0))
        given.gaussian = least;
    int calls = 0;
    const auto modelOf = [&](const LineShape &lines, const Moves &around, double step) {
        return Model(sites, conditions, lines, measured, choice, around, step, progress, calls);
    };
    const auto [low, high] = std::minmax_element(measured.ppm.begin(), measured.ppm.end());
    const double spacing = (*high - *low) / double(measured.ppm.size());
    const Moves searched = choice.reference ? moves : Moves{0, 0};
    const auto tryShape = [&](const LineShape &lines, const Moves &around) {
        const double width = fullWidth(lines) / conditions.larmor;
        Model model = modelOf(lines, around, std::min(4 * spacing, width / 4));
        return bestMove(model, measured, lines, width, around);
    };
    const auto fitFrom = [&](Start start) {
        constexpr int mostRounds = 3;
        for (int round = 1;; ++round) {
            // The end is not farther from the start than some widths.
            const double width = fullWidth(start.shape) / conditions.larmor, near = choice.reference ? 30 * width : 0;
            Model model =
                modelOf(start.shape, {start.reference - near, start.reference + near}, std::min(spacing, width / 8));
            SpectrumFit found = fit(model, measured.intensity, choice, conditions, start);
            // The grid of the curves suits lines as wide as those of the start.
            const LineShape lines{found.lorentzian.value, found.gaussian.value};
            if (round == mostRounds || fullWidth(lines) > 0.9 * fullWidth(start.shape))
                return found;
            start = {{choice.lorentzian ? std::max(lines.lorentzian, least) : lines.lorentzian,
                      choice.gaussian ? std::max(lines.gaussian, least) : lines.gaussian},
                     found.reference.value};
        }
    };
    try {
        Start start{given};
        if (choice.lorentzian || choice.gaussian) {
            for (double factor : trialFactors(measured, fullWidth(given) / conditions.larmor)) {
                const Start found = tryShape({given.lorentzian * (choice.lorentzian ? factor : 1),
                                              given.gaussian * (choice.gaussian ? factor : 1)},
                                             searched);
                if (found.explained > start.explained)
                    start = found;
            }
        } else if (choice.reference) {
            // Lines that are wide enough for a step of the search not to miss them.
            const double wide = std::max(4 * fullWidth(given), 2 * spacing * conditions.larmor);
            start = tryShape({given.lorentzian, std::max(given.gaussian, wide)}, searched);
            start.shape = given;
        }
        SpectrumFit best = fitFrom(start);
        // Sidebands look alike where the measured points show but a few: what was given decides if it does as well.
        const double width = std::max(fullWidth(given), fullWidth(start.shape)) / conditions.larmor;
        if (std::abs(start.reference) > width) {
            const Start asGiven = tryShape(start.shape, {-width, width});
            if (asGiven.explained > 0.5 * start.explained) {
                SpectrumFit other = fitFrom(asGiven);
                if (other.deviation < best.deviation)
                    best = std::move(other);
            }
        }
        return best;
    } catch (const Stopped &) {
        return std::nullopt;
    }
}

} // namespace Workbench::Powder
