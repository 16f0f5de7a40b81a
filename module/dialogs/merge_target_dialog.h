// Choosing the layer that others are merged into.
#pragma once

#include "list_dialog.h"

#include <QStringList>

class QLineEdit;

/// A list of layers with a field that narrows it down to names that have the text in them.
class KvMergeTargetDialog : public KvListDialog {
    Q_OBJECT
public:
    /// `targets` are offered in their order; the dialog tells how many layers are merged.
    KvMergeTargetDialog(const QStringList& targets, int mergedCount, QWidget* parent);

    /// The chosen one after IDOK.
    QString target() const { return m_target; }

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    /// Up and Down go through the list while the field has the focus.
    bool PreTranslateMessage(QObject* receiver, QEvent* event) override;

private Q_SLOTS:
    void narrow(const QString& text);

private:
    QStringList m_targets;
    int m_mergedCount;
    QString m_target;
    QLineEdit* m_field = nullptr;
};
