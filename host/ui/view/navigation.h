// Zooming and panning by hand: of the window, or of the floating viewport that is worked in.
#pragma once

#include "host/editor/pick/floating_windows.h"
#include "host/ui/view/screen_map.h"

namespace korvex {

class Document;

/// Changes what a document's window shows. Where the cursor is over the floating viewport that is worked in,
/// that viewport's own view changes, if it is not locked. That is a change of the drawing: one undo step for
/// all movements of a gesture.
class Navigation {
public:
    /// A new gesture begins: at this point of the window.
    void begin(Document& document, const ScreenMap& map, const QPointF& pixel);
    /// A gesture at this point would move what the last one has moved.
    bool goesOn(const Document& document, const ScreenMap& map, const QPointF& pixel) const;
    /// What is under `pixel` stays there and becomes `factor` times as large.
    void zoom(const ScreenMap& map, const QPointF& pixel, double factor);
    /// What is under `from` comes to lie under `to`.
    void pan(const ScreenMap& map, const QPointF& from, const QPointF& to);
    void zoomExtents();
    /// The document goes, or a gesture is over.
    void end() { m_document = nullptr; }
    bool isOn() const { return m_document != nullptr; }

private:
    /// Where the journal stood after the last movement.
    struct Step {
        std::size_t count = 0, size = 0;
        std::uint32_t segment = 0;
        bool operator==(const Step& o) const {
            return count == o.count && size == o.size && segment == o.segment;
        }
    };
    FloatingWindow moving(const HxDbDatabase& database) const;
    Step now() const;
    void keep(const View& view, const wchar_t* name);

    Document* m_document = nullptr;
    HxDbObjectId m_viewport;  ///< whose view moves; null: the window's
    Step m_last;
};

}  // namespace korvex
