// The workbench of a run: shown from the start, or made when something first needs a window.
#pragma once

#include <QStringList>

#include <memory>

namespace korvex {

class Workbench;

class WindowRun {
public:
    /// `headless`: the workbench is made when it is first asked for, in a size of its own, and nobody sits
    /// before it. Otherwise it is shown now.
    explicit WindowRun(bool headless);
    ~WindowRun();
    WindowRun(const WindowRun&) = delete;
    WindowRun& operator=(const WindowRun&) = delete;

    /// Lets the user answer what the scripts leave open, until they quit. Headless nothing.
    void letUserAnswer();
    /// Something at the start went wrong: a box tells it when the scripts are done and the user is asked.
    void tell(const QString& trouble) { m_troubles << trouble; }
    /// The modules' palettes that were shown when the window was closed last are shown again; headless none.
    void restorePalettes();
    /// Before the modules go.
    void keepPalettes() const;
    bool isHeadless() const { return m_headless; }

private:
    Workbench* make();
    void showTroubles();

    bool m_headless;
    std::unique_ptr<Workbench> m_workbench;
    QStringList m_troubles;
};

}  // namespace korvex
