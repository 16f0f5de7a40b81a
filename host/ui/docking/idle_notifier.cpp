// Tells a frame window when the host has nothing left to do.
#include "host/ui/docking/idle_notifier.h"

#include "host/editor/command_processor.h"
#include "host/editor/editor.h"
#include "sdk/hxdock.h"

#include <QAbstractEventDispatcher>
#include <QApplication>

#include <algorithm>
#include <vector>

namespace korvex {

namespace {

std::vector<IdleNotifier*>& notifiers() {
    static std::vector<IdleNotifier*> all;
    return all;
}

bool isIdle() {
    return !editor().processor().isWorking() && !QApplication::activeModalWidget() &&
           !QApplication::activePopupWidget();
}

}  // namespace

IdleNotifier::IdleNotifier(HxUiDockFrameWindow& frame) : m_frame(frame) {
    notifiers().push_back(this);
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &IdleNotifier::notify);
}

IdleNotifier::~IdleNotifier() {
    notifiers().erase(std::remove(notifiers().begin(), notifiers().end(), this), notifiers().end());
}

void IdleNotifier::notify() {
    if (isIdle()) {
        m_frame.notifyIdle();
    }
}

void IdleNotifier::notifyAll() {
    const std::vector<IdleNotifier*> all = notifiers();
    for (IdleNotifier* notifier : all) {
        if (std::find(notifiers().begin(), notifiers().end(), notifier) != notifiers().end()) {
            notifier->notify();
        }
    }
}

}  // namespace korvex
