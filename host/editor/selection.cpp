// Follows the drawing, so that what is selected can always be worked on.
#include "host/editor/selection.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/pick/block_geometry.h"
#include "host/editor/pick/nesting.h"
#include "host/editor/view.h"
#include "sdk/hxdbentity.h"

#include <algorithm>

HX_DEFINE_MEMBERS(HxEdPickFirstProcessor, HxRxObject)

namespace korvex {

namespace {

std::map<int, std::function<void(const HxDbDatabase&)>>& listeners() {
    static std::map<int, std::function<void(const HxDbDatabase&)>> all;
    return all;
}

/// Which entities of the current space can be selected now.
class Selectable {
public:
    explicit Selectable(const HxDbDatabase& database)
        : m_rules(hxdbGetCurVportId(&database).stub()), m_space(currentSpace(database).stub()) {
        m_root.contents = m_space;
    }

    bool accepts(HxDbStub* entity) {
        if (!entity || entity->owner != m_space || entity->subEntity || !entity->recordClass ||
            !entity->recordClass->isEntity || !isAlive(*entity)) {
            return false;
        }
        if (entityGroups(*entity).type == "VIEWPORT" && isSheet(*entity)) {
            return false;
        }
        HxDbStub* layer = m_rules.layerOf(*entity, m_root);
        // A reference on a layer that is off shows what in it is on other layers.
        return !m_rules.isFrozen(layer) &&
               (!m_rules.isHidden(layer) || shapeOf(*entity).kind == ShapeKind::reference);
    }

private:
    /// The viewport that stands for the sheet as a whole.
    static bool isSheet(HxDbStub& viewport) {
        const Shape shape = shapeOf(viewport);
        return !shape.window || !shape.window->isFloating();
    }

    LayerRules m_rules;
    HxDbStub* m_space;
    Nesting m_root;
};

}  // namespace

/// Hears what happens to the selected objects and to what shows them.
class Selection::Changes final : public HxDbDatabaseReactor {
public:
    Changes(Selection& selection, const HxDbDatabase& database)
        : m_selection(selection), m_database(database) {
        m_database.addReactor(this);
    }
    ~Changes() override { m_database.removeReactor(this); }
    Changes(const Changes&) = delete;
    Changes& operator=(const Changes&) = delete;

    void objectErased(const HxDbDatabase*, const HxDbObject* object, bool erased) override {
        if (erased) {
            m_selection.forget(object->objectId().stub());
        }
    }
    void objectUnAppended(const HxDbDatabase*, const HxDbObject* object) override {
        m_selection.forget(object->objectId().stub());
    }
    void objectModified(const HxDbDatabase*, const HxDbObject* object) override {
        const bool shows =
            object->isKindOf(HxDbLayerTableRecord::desc()) || object->isKindOf(HxDbViewport::desc());
        if (shows || m_selection.m_places.count(object->objectId().stub()) > 0) {
            m_selection.m_visibilityChanged = true;
            if (!m_selection.m_places.empty()) {
                m_selection.changed();
            }
        }
    }

private:
    Selection& m_selection;
    const HxDbDatabase& m_database;
};

Selection::Selection(HxDbDatabase& database)
    : m_database(database), m_space(currentSpace(database)),
      m_changes(std::make_unique<Changes>(*this, database)) {}

Selection::~Selection() = default;

/// Drops what can be selected no more.
void Selection::settle() {
    const HxDbObjectId space = currentSpace(m_database);
    if (space != m_space) {
        m_space = space;
        clear();
    }
    if (m_visibilityChanged && !m_places.empty()) {
        Selectable selectable(m_database);
        for (auto at = m_places.begin(); at != m_places.end();) {
            at = selectable.accepts(at->first) ? std::next(at) : m_places.erase(at);
        }
        m_listed = false;
    }
    m_visibilityChanged = false;
}

const std::vector<HxDbObjectId>& Selection::objects() {
    settle();
    if (!m_listed) {
        m_objects.clear();
        m_objects.reserve(m_places.size());
        for (const auto& [object, place] : m_places) {
            m_objects.emplace_back(object);
        }
        std::sort(m_objects.begin(), m_objects.end(), [&](const HxDbObjectId& a, const HxDbObjectId& b) {
            return m_places[a.stub()] < m_places[b.stub()];
        });
        m_listed = true;
    }
    return m_objects;
}

bool Selection::contains(HxDbObjectId object) {
    settle();
    return m_places.count(object.stub()) > 0;
}

void Selection::add(const std::vector<HxDbObjectId>& objects) {
    settle();
    Selectable selectable(m_database);
    for (const HxDbObjectId& object : objects) {
        if (selectable.accepts(object.stub()) && m_places.try_emplace(object.stub(), m_next).second) {
            ++m_next;
        }
    }
    changed();
}

void Selection::addAll() {
    std::vector<HxDbObjectId> all;
    if (const HxDbStub* space = currentSpace(m_database).stub()) {
        for (HxDbStub* entity : members(*space)) {
            all.emplace_back(entity);
        }
    }
    add(all);
}

void Selection::remove(const std::vector<HxDbObjectId>& objects) {
    settle();
    for (const HxDbObjectId& object : objects) {
        m_places.erase(object.stub());
    }
    changed();
}

void Selection::clear() {
    if (!m_places.empty()) {
        m_places.clear();
        changed();
    }
}

void Selection::forget(HxDbStub* object) {
    if (m_places.erase(object) > 0) {
        changed();
    }
}

void Selection::changed() {
    m_listed = false;
    const auto now = listeners();
    for (const auto& [number, call] : now) {
        if (listeners().count(number) > 0) {
            call(m_database);
        }
    }
}

namespace {

/// Keeps the selections of all drawings, each until its drawing goes.
class Selections final : public HxDbDatabaseReactor {
public:
    Selections() = default;
    ~Selections() override {
        for (const auto& [database, selection] : m_all) {
            database->removeReactor(this);
        }
    }
    Selections(const Selections&) = delete;
    Selections& operator=(const Selections&) = delete;

    Selection& of(HxDbDatabase& database) {
        std::unique_ptr<Selection>& selection = m_all[&database];
        if (!selection) {
            selection = std::make_unique<Selection>(database);
            database.addReactor(this);
        }
        return *selection;
    }
    void goodbye(const HxDbDatabase* database) override {
        database->removeReactor(this);
        m_all.erase(database);
    }

private:
    std::map<const HxDbDatabase*, std::unique_ptr<Selection>> m_all;
};

class PickFirst final : public HxEdPickFirstProcessor {
public:
    Hx::ErrorStatus process(int action) override {
        if (action != kHxPickFirstDrop) {
            return Hx::eInvalidInput;
        }
        if (HxDbDatabase* database = curDocDatabase()) {
            selectionOf(*database).clear();
        }
        return Hx::eOk;
    }
    void getSelection(HxArray<HxDbObjectId>& objects) const override {
        objects.removeAll();
        if (HxDbDatabase* database = curDocDatabase()) {
            for (const HxDbObjectId& id : selectionOf(*database).objects()) {
                objects.append(id);
            }
        }
    }
    void setSelection(const HxArray<HxDbObjectId>& objects) override {
        if (HxDbDatabase* database = curDocDatabase()) {
            Selection& selection = selectionOf(*database);
            selection.clear();
            selection.add({objects.begin(), objects.end()});
        }
    }
};

}  // namespace

Selection& selectionOf(HxDbDatabase& database) {
    static Selections selections;
    return selections.of(database);
}

int addSelectionListener(std::function<void(const HxDbDatabase&)> changed) {
    static int last = 0;
    listeners().emplace(++last, std::move(changed));
    return last;
}

void removeSelectionListener(int number) { listeners().erase(number); }

}  // namespace korvex

HxEdPickFirstProcessor* hxedPickFirstProcessor() {
    static korvex::PickFirst processor;
    return &processor;
}
