// A tab for each open drawing.
#pragma once

#include <QTabBar>

class HxApDocument;

namespace korvex {

class Dialogue;

/// Follows the document manager when refresh is called; activates and closes drawings.
class DocumentTabs : public QTabBar {
    Q_OBJECT
public:
    explicit DocumentTabs(Dialogue& dialogue, QWidget* parent = nullptr);

    void refresh();
    /// Activates the next (1) or previous (-1) drawing.
    void step(int by);

Q_SIGNALS:
    /// Something was refused; a sentence for the status bar.
    void refused(const QString& why);

protected:
    /// Many tabs are scrolled before their titles are cut to nothing.
    QSize minimumTabSizeHint(int index) const override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    HxApDocument* documentAt(int index) const;
    void addCloseButton(int index);
    void activate(int index);
    void closeTab(int index);

    Dialogue& m_dialogue;
    bool m_isRefreshing = false;
};

}  // namespace korvex
