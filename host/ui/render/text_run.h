// Texts broken into lines and measured, ready to be drawn at any size.
#pragma once

#include "host/db/geometry/text_content.h"
#include "sdk/hxdbid.h"

#include <QFont>
#include <QString>

#include <vector>

namespace korvex {

/// Lines of text in the plane that `across` and `up` span, in units of the height of capitals.
struct TextRun {
    struct Line {
        QString text;
        float left = 0, base = 0;  ///< of the line's start, along `across` and `up`
        float width = 0;
    };
    HxGePoint3d origin;
    HxGeVector3d across;
    HxGeVector3d up;
    std::vector<Line> lines;

    std::size_t bytes() const;
};

/// Lays a text out; a run without lines when there is nothing to draw.
TextRun layOut(const TextContent& content, const HxDbDatabase& database);

/// The font that all texts are drawn in, with a height of pixels.
QFont textFont(int pixels);
/// The height of capitals of a font of 1 pixel.
double capitalHeight();

}  // namespace korvex
