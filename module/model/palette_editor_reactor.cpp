// Follows commands, system variables and external references for the layer palette.
#include "palette_editor_reactor.h"

#include "blocking_commands.h"
#include "palette_doc_reactor.h"
#include "visible_palette.h"

#include <cwchar>

namespace {

constexpr wchar_t kNomutt[] = L"NOMUTT";
constexpr std::int16_t kNothingSaved = -1;

bool is(const wchar_t* name, const wchar_t* wanted) { return name && std::wcscmp(name, wanted) == 0; }

/// The palette, when the command is the one that it sends itself and prompts are to be kept from view.
KvLayerPaletteMarks* quietPalette(const wchar_t* command) {
    KvLayerPaletteMarks* const palette = layerPalette();
    return is(command, L"VPLAYER") && palette && palette->savedNomutt() >= 0 ? palette : nullptr;
}

void setNomutt(std::int16_t value) {
    resbuf node = {};
    node.restype = RTSHORT;
    node.resval.rint = value;
    hxedSetVar(kNomutt, &node);
}

void restoreNomutt(const wchar_t* command) {
    if (KvLayerPaletteMarks* const palette = quietPalette(command)) {
        setNomutt(palette->savedNomutt());
        palette->setSavedNomutt(kNothingSaved);
    }
}

void endBlocking(const wchar_t* command) {
    KvLayerPaletteDocReactor* const documents = paletteDocReactor();
    HxApDocument* const document = curDoc();
    if (documents && document && isNeedBlockCommand(command)) documents->blockingCommandEnded(document);
}

void currentLayerChanged(KvLayerPaletteMarks& palette) { palette.updateCurLayer(); }

void spaceChanged(KvLayerPaletteMarks& palette) {
    palette.updateTileMode();
    palette.SetDirtyNeedRefreshAll(curDocDatabase());
}

void viewportChanged(KvLayerPaletteMarks& palette) {
    palette.SetDirtyNeedRefreshList();
    palette.SetDirtyNeedRefreshAll(hxdbWorkingDatabase());
}

void highlightChanged(KvLayerPaletteMarks& palette) {
    const HxDbDatabase* const database = palette.GetDatabase();
    if (database && !database->tilemode()) palette.SetDirtyNeedRefreshList();
}

struct VariableRow {
    const wchar_t* name;
    void (*changed)(KvLayerPaletteMarks& palette);
};
constexpr VariableRow kVariables[] = {
    {L"CLAYER", currentLayerChanged},
    {L"TILEMODE", spaceChanged},
    {L"CVPORT", viewportChanged},
    {L"LAYEROVERRIDEHIGHLIGHT", highlightChanged},
};

void xrefsChanged(bool isEnd) {
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (isEnd && palette) palette->SetDirtyNeedRefreshFilter();
}

}  // namespace

KvLayerPaletteEditorReactor::KvLayerPaletteEditorReactor() { hxedEditor()->addReactor(this); }

KvLayerPaletteEditorReactor::~KvLayerPaletteEditorReactor() { hxedEditor()->removeReactor(this); }

void KvLayerPaletteEditorReactor::commandWillStart(const wchar_t* name) {
    KvLayerPaletteDocReactor* const documents = paletteDocReactor();
    HxApDocument* const document = curDoc();
    if (documents && document && isNeedBlockCommand(name)) documents->blockingCommandStarted(document);
    if (quietPalette(name)) setNomutt(1);
}

void KvLayerPaletteEditorReactor::commandEnded(const wchar_t* name) {
    endBlocking(name);
    restoreNomutt(name);
}

void KvLayerPaletteEditorReactor::commandCancelled(const wchar_t* name) { commandEnded(name); }

void KvLayerPaletteEditorReactor::commandFailed(const wchar_t* name) { restoreNomutt(name); }

void KvLayerPaletteEditorReactor::sysVarChanged(const wchar_t* name, bool /*success*/) {
    KvLayerPaletteMarks* const palette = visiblePalette();
    for (const VariableRow& row : kVariables) {
        if (palette && is(name, row.name)) row.changed(*palette);
    }
    const KvLayerPaletteDocReactor* const documents = paletteDocReactor();
    const bool isOtherViewport = is(name, L"TILEMODE") || is(name, L"CVPORT");
    if (isOtherViewport && documents && documents->context()) {
        documents->context()->followViewport(curDocDatabase());
    }
}

void KvLayerPaletteEditorReactor::xrefSubcommandAttachItem(HxDbDatabase* /*database*/, int activity,
                                                           const wchar_t* path) {
    xrefsChanged(activity == kXrefEnd && (!path || *path == 0));
}

void KvLayerPaletteEditorReactor::xrefSubcommandDetachItem(HxDbDatabase* /*database*/, int activity,
                                                           HxDbObjectId /*id*/) {
    xrefsChanged(activity == kXrefEnd);
}
