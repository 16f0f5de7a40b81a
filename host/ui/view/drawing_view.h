// The window onto a drawing: shows it, zooms and pans, takes points and picks, keeps the selection.
#pragma once

#include "host/ui/render/scene_painter.h"
#include "sdk/hxge.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;

namespace korvex {

class Document;

/// Shows one document and follows it: commands, undo, layers, spaces. Zooming and panning leave the drawing
/// as it is, but for those in the floating viewport that is worked in. While it is shown its size is the
/// screen's (setScreenSize). Double clicks enter and leave viewports, the Delete key erases what is selected:
/// both by sending commands to the document.
class DrawingView : public QWidget {
    Q_OBJECT
public:
    /// What the user is asked for. `selection`: nothing, no command runs; objects are selected.
    enum class Asking { selection, point, entity, nothing };

    explicit DrawingView(QWidget* parent = nullptr);
    ~DrawingView() override;

    /// Null for none; a document that is closed is let go by itself.
    void setDocument(Document* document);
    Document* document() const;

    void setDark(bool dark);
    void setSceneStyle(const SceneStyle& style);

    /// A rubber band leads from `rubberFrom`, in the current space, to the cursor. `nested`: entities inside
    /// of blocks are asked for, and lit under the cursor.
    void setAsking(Asking asking, std::optional<HxGePoint3d> rubberFrom = {}, bool nested = true);
    Asking asking() const;
    /// Lights up one object until another is set: the innermost first, then the references that hold it. An
    /// empty path lights none.
    void setHighlighted(const std::vector<HxDbObjectId>& path);

    /// How often the drawing was painted as a whole; for measuring.
    int paintCount() const;

    QSize sizeHint() const override;

public slots:
    void zoomIn();
    void zoomOut();
    void zoomExtents();

signals:
    /// A click while a point or an entity is asked for; in the current space.
    void pointGiven(const HxGePoint3d& point);
    /// The cursor is there, in the current space.
    void coordinatesChanged(const HxGePoint3d& point);
    /// Esc. What the view itself had begun (a selection window, a selection) is dropped then.
    void cancelPressed();
    /// A right click while something is asked for. Otherwise it asks for a context menu, see
    /// QWidget::customContextMenuRequested.
    void enterPressed();
    /// A key that is not the view's own; for the command line.
    void keyTyped(QKeyEvent* event);
    /// Something else is seen: zoomed, panned, resized, another space.
    void viewChanged();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    class Input;
    std::unique_ptr<Input> m_input;
};

}  // namespace korvex
