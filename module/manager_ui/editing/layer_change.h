// One change of many layers.
#pragma once

#include "hxdbid.h"
#include "hxdbsymtb.h"

#include <QString>

#include <functional>
#include <vector>

class QWidget;
class KvLayerListCtrl;

/// What is done with a record that is open for write. The status does not matter: a layer that refuses stays
/// as it is.
using KvLayerChange = std::function<void(HxDbLayerTableRecord&)>;

/// Changes the layers of a grid, one after the other, as one undo step of that name, with progress when it
/// takes long; the user may stop it, and keeps what is done. Layers whose records cannot be opened for write
/// are left out. Their rows are filled anew.
void changeLayers(KvLayerListCtrl& grid, const std::vector<HxDbObjectId>& layers, const QString& name,
                  const KvLayerChange& change);

/// Opens a record that is open for read for write and changes it; false when others have it open.
bool changeRecord(HxDbLayerTableRecord& record, const KvLayerChange& change);

/// Layers have been frozen or turned off: what was selected in the drawing before a command is dropped.
void dropPickFirst();

/// No command runs in the current document; else the user is told to end it first.
bool isFreeForCommand(QWidget* parent);
/// The current document runs the command when the host is idle; `echo`: with its prompts.
void sendToDocument(const wchar_t* command, bool echo = false);

/// Before layers are turned off: asks whether the current one among them is to be, and takes it out if not.
void askAboutCurrent(KvLayerListCtrl& grid, std::vector<HxDbObjectId>& layers);
/// Before layers are frozen: the current one cannot be, which is told; it is taken out.
void leaveCurrentThawed(KvLayerListCtrl& grid, std::vector<HxDbObjectId>& layers);
