// Everything that makes a view of a document out of date.
#pragma once

#include "sdk/hxdoc.h"
#include "sdk/hxed.h"

#include <functional>
#include <memory>

namespace korvex {

class Document;

/// Watches one document. All calls may come at any time, many in a row, and from inside of changes: mark, and
/// do the work later.
class ChangeWatch {
public:
    struct Calls {
        std::function<void()> changed;                      ///< the drawing, or what of it is shown
        std::function<void()> selection;                    ///< other objects are selected
        std::function<void()> cursor;                       ///< the cursor looks otherwise
        std::function<void()> closing;                      ///< the document goes
        std::function<void(HxDbObjectId, bool)> highlight;  ///< lit or not; null: everything is unlit
    };

    explicit ChangeWatch(Calls calls);
    ~ChangeWatch();
    ChangeWatch(const ChangeWatch&) = delete;
    ChangeWatch& operator=(const ChangeWatch&) = delete;

    /// Null for none.
    void watch(Document* document);

private:
    class DrawingChanges;
    class EditorChanges;
    class Closing;

    void redraw(HxDbObjectId object, int mode);

    Calls m_calls;
    std::unique_ptr<DrawingChanges> m_drawing;
    std::unique_ptr<EditorChanges> m_editor;
    std::unique_ptr<Closing> m_closing;
    int m_hooks = 0;
    int m_selection = 0;
};

}  // namespace korvex
