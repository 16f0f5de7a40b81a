// What layers look like in the active viewport: the commands that set it, and freezing in it.
#include "viewport_overrides.h"

#include "layer_change.h"

#include "frame/module_state.h"
#include "frame/util/system_variable.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/lineweight_text.h"
#include "model/auto_layer_record.h"
#include "model/layer_prop_manager.h"

#include "hxdbdict.h"
#include "hxdbentity.h"
#include "hxdoc.h"

#include <cwchar>

namespace {

constexpr double kHundredthsPerInch = 2540.0;
constexpr double kHundredthsPerMillimetre = 100.0;

template <class... Values>
CStdStr<wchar_t> formatted(const wchar_t* format, Values... values) {
    CStdStr<wchar_t> text;
    text.Format(format, values...);
    return text;
}

HxArray<HxDbObjectId> arrayOf(const std::vector<HxDbObjectId>& ids) {
    HxArray<HxDbObjectId> array;
    for (const HxDbObjectId id : ids) {
        array.append(id);
    }
    return array;
}

}  // namespace

HxDbObjectId activeViewport(const HxDbDatabase* database) {
    const bool isFloating = database && !database->tilemode() && database->cvport() > 1;
    return isFloating ? hxdbGetCurVportId(database) : HxDbObjectId();
}

std::wstring listElement(const std::wstring& name) {
    if (name.find(L',') == std::wstring::npos) return name;
    std::wstring escaped;
    for (const wchar_t c : name) {
        if (std::wcschr(L"#@.*?~[`,", c)) escaped += L'`';
        escaped += c;
    }
    return escaped;
}

CStdStr<wchar_t> layerNames(const KvLayerListCtrl& grid, const std::vector<HxDbObjectId>& layers) {
    CStdStr<wchar_t> names;
    for (const HxDbObjectId layer : layers) {
        const KvAutoLayerRecordPtr record(grid.transactions(), grid.manager()->FindLayer(layer), true);
        if (!record.object()) continue;
        if (!names.empty()) names += L",";
        names += listElement(record->name());
    }
    return names;
}

// ---- commands ----

CStdStr<wchar_t> colorOverrideCommand(const HxCmColor& color, const CStdStr<wchar_t>& layers) {
    if (color.isFromBook()) {
        return formatted(L"'_.vplayer _C _CO %ls\n%ls\n%ls\n_C  ", color.bookName().c_str(),
                         color.colorName().c_str(), layers.c_str());
    }
    if (color.isByColor()) {
        return formatted(L"'_.vplayer _C _T %d,%d,%d %ls\n_C  ", color.red(), color.green(), color.blue(),
                         layers.c_str());
    }
    return formatted(L"'_.vplayer _C %d %ls\n_C  ", color.colorIndex(), layers.c_str());
}

CStdStr<wchar_t> linetypeOverrideCommand(HxDbObjectId linetype, const CStdStr<wchar_t>& layers) {
    const HxDbObjectPointer<HxDbLinetypeTableRecord> record(linetype, HxDb::kForRead);
    if (!record) return {};
    return formatted(L"'_.vplayer _LT %ls\n%ls\n_C  ", record->name(), layers.c_str());
}

CStdStr<wchar_t> lineweightOverrideCommand(HxDb::LineWeight weight, const CStdStr<wchar_t>& layers) {
    if (weight == HxDb::kLnWtByLwDefault) return formatted(L"'_.vplayer _LW _D %ls\n_C  ", layers.c_str());
    if (lineweightsAreInInches()) {
        return formatted(L"'_.vplayer _LW %.3f %ls\n_C  ", static_cast<double>(weight) / kHundredthsPerInch,
                         layers.c_str());
    }
    return formatted(L"'_.vplayer _LW %.2f %ls\n_C  ", static_cast<double>(weight) / kHundredthsPerMillimetre,
                     layers.c_str());
}

CStdStr<wchar_t> plotStyleOverrideCommand(const wchar_t* style, const CStdStr<wchar_t>& layers) {
    return formatted(L"'_.vplayer _PS %ls\n%ls\n_C  ", style, layers.c_str());
}

/// While NOMUTT is kept on the palette, the command counts as the palette's own.
void sendViewportCommand(const CStdStr<wchar_t>& command) {
    if (!curDoc() || command.empty()) return;
    if (KvPalettePanel* const palette = layerPalette()) {
        palette->setSavedNomutt(static_cast<std::int16_t>(shortVariable(L"NOMUTT", 0)));
    }
    sendToDocument(command.c_str());
}

// ---- at once ----

bool toggleInViewport(KvLayerPropManager& manager, HxDbObjectId clicked,
                      const std::vector<HxDbObjectId>& layers) {
    HxDbViewport* const viewport = manager.GetViewport();
    if (!viewport) return false;
    const bool freezes = !viewport->isLayerFrozenInViewport(clicked);
    if (manager.isPaletteMode()) viewport->close();
    return setFrozenInViewport(manager, freezes, layers) && freezes;
}

bool setFrozenInViewport(KvLayerPropManager& manager, bool freeze, const std::vector<HxDbObjectId>& layers) {
    HxDbViewport* const viewport = manager.GetViewport();
    if (!viewport) return false;
    Hx::ErrorStatus status = viewport->upgradeOpen();
    if (status == Hx::eOk) {
        status = freeze ? viewport->freezeLayersInViewport(arrayOf(layers))
                        : viewport->thawLayersInViewport(arrayOf(layers));
        viewport->downgradeOpen();
    }
    if (manager.isPaletteMode()) viewport->close();
    return status == Hx::eOk;
}

HxDbObjectId plotStyleId(const HxDbDatabase* database, const wchar_t* name) {
    const HxDbObjectPointer<HxDbDictionary> styles(
        database ? database->getPlotStyleNameDictionaryId() : HxDbObjectId(), HxDb::kForRead);
    HxDbObjectId id;
    if (styles) styles->getAt(name, id);
    return id;
}
