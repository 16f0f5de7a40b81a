// One of the colour dialog's ways to choose a colour.
#pragma once

#include "sdk/hxcm.h"

#include <QWidget>

namespace korvex {

class ColorTab : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Marks a colour, chosen here or elsewhere, where the page has it. Emits nothing.
    virtual void showColor(const HxCmColor& color) = 0;
    /// The control that a user begins with gets the focus.
    virtual void takeFocus() = 0;
    /// What is typed and cannot be read; empty when all is well. The field with it gets the focus.
    virtual QString fault() { return {}; }

Q_SIGNALS:
    void chosen(const HxCmColor& color);
    /// The user is done: chose with a double click.
    void confirmed();
};

}  // namespace korvex
