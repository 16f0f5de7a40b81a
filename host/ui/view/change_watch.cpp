// The reactors behind the calls.
#include "host/ui/view/change_watch.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/editor_notices.h"
#include "host/editor/selection.h"

#include <algorithm>
#include <cwchar>

namespace korvex {

class ChangeWatch::DrawingChanges final : public HxDbDatabaseReactor {
public:
    DrawingChanges(const Calls& calls, Document* document) : m_calls(calls), m_document(document) {
        m_document->database()->addReactor(this);
    }
    ~DrawingChanges() override { m_document->database()->removeReactor(this); }
    DrawingChanges(const DrawingChanges&) = delete;
    DrawingChanges& operator=(const DrawingChanges&) = delete;

    Document* document() const { return m_document; }

    void objectAppended(const HxDbDatabase*, const HxDbObject*) override { m_calls.changed(); }
    void objectUnAppended(const HxDbDatabase*, const HxDbObject*) override { m_calls.changed(); }
    void objectReAppended(const HxDbDatabase*, const HxDbObject*) override { m_calls.changed(); }
    void objectModified(const HxDbDatabase*, const HxDbObject*) override { m_calls.changed(); }
    void objectErased(const HxDbDatabase*, const HxDbObject*, bool) override { m_calls.changed(); }
    void headerSysVarChanged(const HxDbDatabase*, const wchar_t*, bool) override { m_calls.changed(); }

private:
    const Calls& m_calls;
    Document* m_document;
};

class ChangeWatch::EditorChanges final : public HxEditorReactor {
public:
    explicit EditorChanges(const Calls& calls) : m_calls(calls) { hxedEditor()->addReactor(this); }
    ~EditorChanges() override { hxedEditor()->removeReactor(this); }
    EditorChanges(const EditorChanges&) = delete;
    EditorChanges& operator=(const EditorChanges&) = delete;

    void sysVarChanged(const wchar_t* name, bool) override {
        const wchar_t* const spaces[] = {L"CVPORT", L"CTAB", L"TILEMODE"};
        if (std::any_of(std::begin(spaces), std::end(spaces),
                        [name](const wchar_t* one) { return std::wcscmp(one, name) == 0; })) {
            m_calls.changed();
        } else if (std::wcscmp(name, L"PICKBOX") == 0) {
            m_calls.cursor();
        }
    }

private:
    const Calls& m_calls;
};

class ChangeWatch::Closing final : public HxApDocManagerReactor {
public:
    Closing(const Calls& calls, const HxApDocument* document) : m_calls(calls), m_document(document) {
        hxDocManager()->addReactor(this);
    }
    ~Closing() override { hxDocManager()->removeReactor(this); }
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;

    void documentToBeDestroyed(HxApDocument* document) override {
        if (document == m_document) {
            m_calls.closing();
        }
    }

private:
    const Calls& m_calls;
    const HxApDocument* m_document;
};

ChangeWatch::ChangeWatch(Calls calls) : m_calls(std::move(calls)) {
    m_editor = std::make_unique<EditorChanges>(m_calls);
    ScreenHooks hooks;
    hooks.redrawAll = [this](int mode) { redraw({}, mode); };
    hooks.redrawOne = [this](HxDbObjectId object, int mode) { redraw(object, mode); };
    hooks.layerTableChanged = m_calls.changed;
    m_hooks = addScreenHooks(std::move(hooks));
    m_selection = addSelectionListener([this](const HxDbDatabase& database) {
        if (m_drawing && m_drawing->document()->database() == &database) {
            m_calls.selection();
        }
    });
}

ChangeWatch::~ChangeWatch() {
    removeSelectionListener(m_selection);
    removeScreenHooks(m_hooks);
}

void ChangeWatch::watch(Document* document) {
    m_drawing.reset();
    m_closing.reset();
    if (document) {
        m_drawing = std::make_unique<DrawingChanges>(m_calls, document);
        m_closing = std::make_unique<Closing>(m_calls, document);
    }
}

void ChangeWatch::redraw(HxDbObjectId object, int mode) {
    const bool isMine =
        m_drawing && (object.isNull() || object.database() == m_drawing->document()->database());
    if (mode != kHxRedrawHighlight && mode != kHxRedrawUnhighlight) {
        m_calls.changed();
    } else if (isMine && !(object.isNull() && mode == kHxRedrawHighlight)) {
        m_calls.highlight(object, mode == kHxRedrawHighlight);
    }
}

}  // namespace korvex
