// A palette that writes down what it is told, in place of the window.
#pragma once

#include "frame/palette_panel.h"

#include <QWidget>

#include <string>
#include <vector>

namespace korvex::test {

/// What was told, as text: "all", "list", "item WALLS", "invalid WALLS" ...
class RecordingPalette : public KvPalettePanel {
public:
    using Told = std::vector<std::string>;
    Told told() { return std::exchange(m_told, {}); }

    void showLayer(HxDbObjectId) override {}
    bool isPaletteVisible() const override { return visible; }
    bool isWndEnabled() const override { return enabled; }
    void setWndEnabled(bool on) override {
        enabled = on;
        tell(on ? "enable" : "disable");
    }
    void SetDirtyNeedRefreshAll(HxDbDatabase* of) override {
        refreshDatabase = of;
        tell("all");
    }
    void SetDirtyNeedRefreshList() override { tell("list"); }
    void SetDirtyNeedRefreshListItem(HxDbObjectId layer) override {
        tell("item " + nameOf(HxDbLayerTableRecord::cast(hxdbObjectPointer(layer))));
    }
    void SetDirtyNeedRefreshFilter() override { tell("filter"); }
    void setRefreshDb(HxDbDatabase* of) override {
        refreshDatabase = of;
        tell("refresh database");
    }
    void clearDirtyFlag() override { tell("clear marks"); }
    void updateCurLayer() override { tell("current layer"); }
    void updateTileMode() override { tell("space"); }
    void setLayerDataValid(const HxDbLayerTableRecord* record, bool valid) override {
        tell((valid ? "valid " : "invalid ") + nameOf(record));
    }
    HxDbDatabase* GetDatabase() const override { return database; }
    void setDatabase(HxDbDatabase* of) override {
        database = of;
        tell("database");
    }
    void clearDlgData() override { tell("clear data"); }
    void clearDocData(HxApDocument* document) override {
        cleared = document;
        tell("clear document");
    }
    std::int16_t savedNomutt() const override { return nomutt; }
    void setSavedNomutt(std::int16_t value) override { nomutt = value; }

    QWidget* widget() override { return &window; }
    bool isFloating() const override { return floating; }
    int dockPosition() const override { return dock; }
    void setDockPosition(int position) override { dock = position; }
    void floatAt(int left, int top) override {
        floating = true;
        window.setGeometry(QRect(QPoint(left, top), window.size()));
    }
    void showPanel(bool show) override {
        ++shows;
        window.setVisible(show);
    }
    void refreshWndLayers(HxDbDatabase* of, bool) override {
        database = of;
        tell("show layers");
    }
    void UpdateUIStyle() override { tell("style"); }

    QWidget window;
    bool floating = false;
    int dock = 0;
    int shows = 0;
    bool visible = true;
    bool enabled = true;
    std::int16_t nomutt = -1;
    HxDbDatabase* database = nullptr;
    HxDbDatabase* refreshDatabase = nullptr;
    HxApDocument* cleared = nullptr;

private:
    void tell(std::string what) { m_told.push_back(std::move(what)); }
    /// Names of layers are ASCII in these tests.
    static std::string nameOf(const HxDbLayerTableRecord* record) {
        const std::wstring name = record ? record->name() : L"(none)";
        return {name.begin(), name.end()};
    }

    Told m_told;
};

}  // namespace korvex::test
