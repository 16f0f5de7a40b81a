// Questions about layer states as message boxes.
#pragma once

#include "layer_states/file/layer_state_questions.h"

#include <QString>

class QWidget;

class KvLayerStateBoxes : public LayerStateQuestions {
public:
    /// Boxes stand before `parent`; null: the open dialog or the main window.
    explicit KvLayerStateBoxes(QWidget* parent = nullptr) : m_parent(parent) {}

    Overwrite mayOverwrite(const Names& states) override;
    bool mayRestore(const CStdStr<wchar_t>& state) override;
    void tellMissingLinetypes(const Names& linetypes) override;
    void tellUnusablePlotStyles(const Names& plotStyles) override;
    void tellPlotStylesLeftOut(const Names& plotStyles) override;
    void tellChangedNames(const Names& names) override;
    void tellNotImported(const CStdStr<wchar_t>& path, const KvLasFailure& failure) override;
    void tellNotExported(const CStdStr<wchar_t>& path, const CStdStr<wchar_t>& reason) override;
    void tellBrokenName(const CStdStr<wchar_t>& name) override;
    void tellNoStates(const CStdStr<wchar_t>& path, const CStdStr<wchar_t>& reason) override;

private:
    int show(const QString& text, unsigned type) const;

    QWidget* m_parent;
};
