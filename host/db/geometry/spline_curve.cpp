// Checks splines from files, evaluates them by de Boor's rule, and interpolates fit points.
#include "host/db/geometry/spline_curve.h"

#include <algorithm>

namespace korvex {

namespace {

std::vector<double> clampedKnots(std::size_t controls, std::size_t degree) {
    std::vector<double> knots(controls + degree + 1);
    for (std::size_t i = 0; i < knots.size(); ++i) {
        const std::size_t inner = std::min(std::max(i, degree), controls) - degree;
        knots[i] = static_cast<double>(inner);
    }
    return knots;
}

bool areKnots(const std::vector<double>& knots, std::size_t controls, std::size_t degree) {
    return knots.size() == controls + degree + 1 && std::is_sorted(knots.begin(), knots.end()) &&
           std::all_of(knots.begin(), knots.end(), [](double k) { return isUsable(k); }) &&
           knots[degree] < knots[controls];
}

bool areWeights(const std::vector<double>& weights, std::size_t controls) {
    return weights.size() == controls &&
           std::all_of(weights.begin(), weights.end(), [](double w) { return w >= 1e-50 && w <= 1e50; });
}

std::size_t spanAt(const SplineCurve& s, double parameter) {
    const auto first = s.knots.begin() + s.degree;
    const auto last = s.knots.begin() + static_cast<std::ptrdiff_t>(s.control.size());
    auto above = std::upper_bound(first, last, parameter);
    while (above != last && *above == *(above - 1)) {
        ++above;
    }
    std::size_t span = static_cast<std::size_t>(above - s.knots.begin()) - 1;
    while (span > static_cast<std::size_t>(s.degree) && s.knots[span] == s.knots[span + 1]) {
        --span;
    }
    return span;
}

/// Derivatives at the points: the solution of the tridiagonal system of a cubic with continuous curvature.
class Tangents {
public:
    Tangents(const std::vector<HxGePoint3d>& points, const std::vector<double>& chords)
        : m_points(points), m_chords(chords), m_upper(points.size()), m_tangents(points.size()) {}

    std::vector<HxGeVector3d> solve(const HxGeVector3d& start, const HxGeVector3d& end) {
        const std::size_t last = m_points.size() - 1;
        const double first = m_chords.front();
        if (start.length() > 0) {
            setRow(0, 0, 1, 0, start.normal());
        } else {
            setRow(0, 0, 2, 1, (m_points[1] - m_points[0]) * (3 / first));
        }
        for (std::size_t i = 1; i < last; ++i) {
            const double before = m_chords[i - 1];
            const double after = m_chords[i];
            const HxGeVector3d right = (m_points[i] - m_points[i - 1]) * (3 * after / before) +
                                       (m_points[i + 1] - m_points[i]) * (3 * before / after);
            const double scale = 1 / (before + after);
            setRow(i, after * scale, 2, before * scale, right * scale);
        }
        if (end.length() > 0) {
            setRow(last, 0, 1, 0, end.normal());
        } else {
            setRow(last, 1, 2, 0, (m_points[last] - m_points[last - 1]) * (3 / m_chords.back()));
        }
        for (std::size_t i = last; i-- > 0;) {
            m_tangents[i] = m_tangents[i] - m_tangents[i + 1] * m_upper[i];
        }
        return std::move(m_tangents);
    }

private:
    void setRow(std::size_t i, double lower, double diagonal, double upper, HxGeVector3d right) {
        if (i > 0) {
            diagonal -= lower * m_upper[i - 1];
            right = right - m_tangents[i - 1] * lower;
        }
        m_upper[i] = upper / diagonal;
        m_tangents[i] = right * (1 / diagonal);
    }

    const std::vector<HxGePoint3d>& m_points;
    const std::vector<double>& m_chords;
    std::vector<double> m_upper;
    std::vector<HxGeVector3d> m_tangents;
};

std::vector<HxGePoint3d> withoutRepeats(const std::vector<HxGePoint3d>& points) {
    std::vector<HxGePoint3d> out;
    for (const HxGePoint3d& p : points) {
        if (!isUsable(p)) {
            return {};
        }
        if (out.empty() || p.distanceTo(out.back()) > 0) {
            out.push_back(p);
        }
    }
    return out;
}

/// Repeats a closed run of points beyond both ends, so far that the ends no longer bend its middle.
std::size_t wrapAround(std::vector<HxGePoint3d>& points) {
    constexpr std::size_t kReach = 24;
    const std::size_t period = points.size() - 1;
    std::vector<HxGePoint3d> wrapped;
    for (std::size_t i = 0; i < points.size() + 2 * kReach; ++i) {
        wrapped.push_back(points[(i + kReach * period - kReach) % period]);
    }
    points = std::move(wrapped);
    return kReach;
}

SplineCurve hermite(const std::vector<HxGePoint3d>& points, const std::vector<double>& chords,
                    const std::vector<HxGeVector3d>& tangents, std::size_t first, std::size_t last) {
    SplineCurve s;
    s.degree = 3;
    s.control.push_back(points[first]);
    s.knots.assign(4, 0.0);
    double at = 0;
    for (std::size_t i = first; i < last; ++i) {
        const double third = chords[i] / 3;
        s.control.push_back(points[i] + tangents[i] * third);
        s.control.push_back(points[i + 1] - tangents[i + 1] * third);
        s.control.push_back(points[i + 1]);
        at += chords[i];
        s.knots.insert(s.knots.end(), 3, at);
    }
    s.knots.push_back(at);
    return s;
}

}  // namespace

HxGePoint3d SplineCurve::pointAt(double parameter) const {
    const double u = std::min(std::max(parameter, firstParameter()), lastParameter());
    const std::size_t span = spanAt(*this, u);
    const std::size_t p = static_cast<std::size_t>(degree);
    std::array<std::array<double, 4>, kMaxDegree + 1> d;
    for (std::size_t j = 0; j <= p; ++j) {
        const std::size_t i = span - p + j;
        const double w = weight(i);
        d[j] = {control[i].x * w, control[i].y * w, control[i].z * w, w};
    }
    for (std::size_t r = 1; r <= p; ++r) {
        for (std::size_t j = p; j >= r; --j) {
            const double low = knots[span - p + j];
            const double a = (u - low) / (knots[span + 1 + j - r] - low);
            for (std::size_t k = 0; k < 4; ++k) {
                d[j][k] = (1 - a) * d[j - 1][k] + a * d[j][k];
            }
        }
    }
    return {d[p][0] / d[p][3], d[p][1] / d[p][3], d[p][2] / d[p][3]};
}

SplineCurve makeSpline(int degree, std::vector<double> knots, std::vector<double> weights,
                       std::vector<HxGePoint3d> control) {
    const bool usable =
        std::all_of(control.begin(), control.end(), [](const HxGePoint3d& p) { return isUsable(p); });
    if (control.size() < 2 || !usable) {
        return {};
    }
    const std::size_t highest =
        std::min<std::size_t>(control.size() - 1, static_cast<std::size_t>(SplineCurve::kMaxDegree));
    const std::size_t p = std::min(static_cast<std::size_t>(std::max(degree, 1)), highest);
    SplineCurve s;
    s.degree = static_cast<int>(p);
    s.knots = areKnots(knots, control.size(), p) ? std::move(knots) : clampedKnots(control.size(), p);
    if (areWeights(weights, control.size())) {
        s.weights = std::move(weights);
    }
    s.control = std::move(control);
    return s;
}

SplineCurve splineThrough(const std::vector<HxGePoint3d>& fitPoints, const FitEnds& ends) {
    std::vector<HxGePoint3d> points = withoutRepeats(fitPoints);
    if (points.size() < 2) {
        return {};
    }
    std::size_t first = 0;
    std::size_t last = points.size() - 1;
    if (ends.periodic && points.size() > 3 && points.front().distanceTo(points.back()) == 0) {
        first = wrapAround(points);
        last += first;
    }
    std::vector<double> chords;
    for (std::size_t i = 1; i < points.size(); ++i) {
        chords.push_back(points[i].distanceTo(points[i - 1]));
    }
    const bool tangents = first == 0 && isUsable(ends.startTangent) && isUsable(ends.endTangent);
    Tangents system(points, chords);
    const std::vector<HxGeVector3d> solved = system.solve(tangents ? ends.startTangent : HxGeVector3d(),
                                                          tangents ? ends.endTangent : HxGeVector3d());
    SplineCurve s = hermite(points, chords, solved, first, last);
    const bool usable =
        std::all_of(s.control.begin(), s.control.end(), [](const HxGePoint3d& p) { return isUsable(p); });
    return usable ? s : SplineCurve{};
}

}  // namespace korvex
