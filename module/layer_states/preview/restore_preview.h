// The drawing as it would look after a restore, in a pane of the layer states manager.
#pragma once

#include "layer_states/preview/layers_after_restore.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class KvPreviewPicture;
class QToolButton;

/// Shows a picture for one selected state and words otherwise. It can be folded to an arrow, which is
/// remembered; nothing is drawn then. Pictures are drawn a moment after the last change, in a quarter of a
/// second or coarsely; between changes nothing runs. The drawing stays as it is.
class KvRestorePreview : public QWidget {
    Q_OBJECT
public:
    /// `states` and the drawing (null: none) must outlive it.
    KvRestorePreview(const KvLayerStateMap& states, HxDbDatabase* database, QWidget* parent = nullptr);
    ~KvRestorePreview() override;

    /// What is selected, and how it would be restored. To be called after every change of either, of the
    /// states and of the drawing; states that are gone by the time of the drawing are fine.
    void setSelection(const std::vector<CKvLayerState*>& selected, const KvRestoreOptions& options);

    bool isFolded() const { return m_isFolded; }
    /// Remembers it.
    void setFolded(bool isFolded);
    /// Folds it without remembering that: there is no room.
    void foldForNow();
    /// How many pictures were drawn; for measuring.
    int pictures() const { return m_pictures; }
    /// What it takes beside what it takes folded.
    int unfoldedWidth() const;

Q_SIGNALS:
    /// It was folded or unfolded, and wants so much more width.
    void widthChanged(int by);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void fold();
    void schedule();
    void draw();
    void tell(const QString& text);

    const KvLayerStateMap& m_states;
    HxDbDatabase* m_database;
    QToolButton* m_heading;
    KvPreviewPicture* m_picture;
    QTimer m_idle;
    std::vector<CKvLayerState*> m_selected;  ///< may be gone
    KvRestoreOptions m_options;
    std::unique_ptr<HxUiLayerPreview> m_preview;  ///< null while folded
    bool m_isFolded;
    int m_pictures = 0;
};
