// Measures texts with the font that they are drawn in, once, at a size where rounding does not count.
#include "host/ui/render/text_run.h"

#include "host/db/geometry/spline_curve.h"
#include "host/db/kernel/entity_access.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>

namespace korvex {

namespace {

constexpr int kMeasuredPixels = 200;

const QFontMetricsF& metrics() {
    static const QFontMetricsF measured(textFont(kMeasuredPixels));
    return measured;
}

double widthOf(const QString& text) {
    return metrics().horizontalAdvance(text) / (kMeasuredPixels * capitalHeight());
}

/// What paragraphs take from their text style.
void applyStyle(TextContent& content, const HxDbDatabase& database) {
    HxDbStub* style =
        findRecord(database, TableKind::style, content.style.empty() ? L"Standard" : content.style);
    if (style && content.isParagraph) {
        const EntityGroups groups = entityGroups(*style);
        const EntityFields fields(groups.groups, groups.format);
        const double factor = std::fabs(fields.real(41, 1));
        content.widthFactor = factor > 0 ? factor : 1;
        content.oblique = fields.angle(50);
    }
}

/// Breaks a line at blanks where it gets wider than `most`.
void wrap(const QString& line, double most, std::vector<TextRun::Line>& out) {
    const auto add = [&out](const QString& text, double width) {
        out.push_back({text, 0, 0, static_cast<float>(width)});
    };
    const double whole = widthOf(line);
    if (!(most > 0) || whole <= most) {
        add(line, whole);
        return;
    }
    QString current;
    double width = 0;
    for (const QString& word : line.split(QLatin1Char(' '))) {
        const QString longer = current.isEmpty() ? word : current + QLatin1Char(' ') + word;
        const double longerWidth = widthOf(longer);
        if (!current.isEmpty() && longerWidth > most) {
            add(current, width);
            current = word;
            width = widthOf(word);
        } else {
            current = longer;
            width = longerWidth;
        }
    }
    add(current, width);
}

/// Base lines from the alignment; `height` is that of capitals, 1.
void placeLines(const TextContent& content, TextRun& run) {
    const double pitch = content.height > 0 ? content.linePitch / content.height : 0;
    const double below = pitch * static_cast<double>(run.lines.size() - 1);
    constexpr double kDescent = 0.3;
    double base = 0;
    switch (content.along) {
    case TextAlong::baseline: break;
    case TextAlong::top: base = -1; break;
    case TextAlong::middle: base = (below - 1) / 2; break;
    case TextAlong::bottom: base = below + (content.isParagraph ? 0 : kDescent); break;
    }
    for (TextRun::Line& line : run.lines) {
        line.base = static_cast<float>(base);
        line.left = content.across == TextAcross::center  ? -line.width / 2
                    : content.across == TextAcross::right ? -line.width
                                                          : 0.0F;
        base -= pitch;
    }
}

}  // namespace

std::size_t TextRun::bytes() const {
    std::size_t total = sizeof *this + lines.capacity() * sizeof(Line);
    for (const Line& line : lines) {
        total += sizeof(QStringData) + static_cast<std::size_t>(line.text.capacity() + 1) * sizeof(QChar);
    }
    return total;
}

QFont textFont(int pixels) {
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return font;
}

double capitalHeight() {
    static const double height = [] {
        const double capital = metrics().capHeight() / kMeasuredPixels;
        return capital > 0.2 && capital < 1.5 ? capital : 0.72;
    }();
    return height;
}

TextRun layOut(const TextContent& given, const HxDbDatabase& database) {
    TextRun run;
    if (given.lines.empty() || !(given.height > 0) || !isUsable(given.height) || !qGuiApp) {
        return run;
    }
    TextContent content = given;
    applyStyle(content, database);
    const double unit = content.height * content.widthFactor;
    for (const std::wstring& line : content.lines) {
        wrap(QString::fromStdWString(line), content.wrapWidth / unit, run.lines);
    }
    double height = content.height;
    double width = unit;
    const double natural = run.lines.front().width * unit;
    if (content.span > 0 && natural > 0) {
        width *= content.span / natural;
        height *= content.across == TextAcross::aligned ? content.span / natural : 1;
    }
    placeLines(content, run);
    const HxGeMatrix3d& m = content.placement;
    run.origin = m * HxGePoint3d();
    run.across = m * HxGePoint3d(width, 0) - run.origin;
    run.up = m * HxGePoint3d(height * std::tan(content.oblique), height) - run.origin;
    const bool isSeen =
        std::any_of(run.lines.begin(), run.lines.end(), [](const auto& l) { return l.width > 0; });
    if (!isSeen || !isUsable(run.origin) || !isUsable(run.across) || !isUsable(run.up)) {
        run.lines.clear();
    }
    run.lines.shrink_to_fit();
    return run;
}

}  // namespace korvex
