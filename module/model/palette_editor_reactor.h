// Follows commands, system variables and external references for the layer palette.
#pragma once

#include "hxed.h"

/// Registered with the editor from its making to its end.
class KvLayerPaletteEditorReactor : public HxEditorReactor {
public:
    KvLayerPaletteEditorReactor();
    ~KvLayerPaletteEditorReactor() override;
    KvLayerPaletteEditorReactor(const KvLayerPaletteEditorReactor&) = delete;
    KvLayerPaletteEditorReactor& operator=(const KvLayerPaletteEditorReactor&) = delete;

    void commandWillStart(const wchar_t* name) override;
    void commandEnded(const wchar_t* name) override;
    void commandCancelled(const wchar_t* name) override;
    /// A command that failed goes on blocking its document.
    void commandFailed(const wchar_t* name) override;
    void sysVarChanged(const wchar_t* name, bool success) override;
    void xrefSubcommandAttachItem(HxDbDatabase* database, int activity, const wchar_t* path) override;
    void xrefSubcommandDetachItem(HxDbDatabase* database, int activity, HxDbObjectId id) override;
    void lispWillStart(const wchar_t* /*firstLine*/) override {}
    void lispEnded() override {}
};
