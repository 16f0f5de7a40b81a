// Tells a frame window when the host has nothing left to do.
#pragma once

#include <QObject>

class HxUiDockFrameWindow;

namespace korvex {

/// Emits the frame's idle signal whenever the event loop is about to wait, unless a command works (one that
/// waits for an answer does not) or a modal dialog or a menu is open. It wakes nothing up by itself.
class IdleNotifier : public QObject {
    Q_OBJECT
public:
    explicit IdleNotifier(HxUiDockFrameWindow& frame);
    ~IdleNotifier() override;

    /// For loops that never wait (runs without windows): one idle turn for every frame there is, under the
    /// same conditions. An editor's idle handler calls it after it has processed events.
    static void notifyAll();

private:
    void notify();

    HxUiDockFrameWindow& m_frame;
};

}  // namespace korvex
