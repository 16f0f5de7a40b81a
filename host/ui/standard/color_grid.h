// Colours as fields in rows and columns: one is chosen by mouse or arrow keys.
#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QTableView>

#include <vector>

namespace korvex {

struct ColorField {
    QColor color;
    QString name;
    int value = 0;  ///< whatever the maker of the grid knows it by
};

/// A field in each cell, row by row. Tool tips and accessible texts give the names.
class ColorGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    ColorGridModel(std::vector<ColorField> fields, int columns, QObject* parent);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Null outside of the fields.
    const ColorField* field(const QModelIndex& index) const;
    QModelIndex indexOfValue(int value) const;

private:
    std::vector<ColorField> m_fields;
    int m_columns;
};

/// The grid, in the size of its fields.
class ColorGrid : public QTableView {
    Q_OBJECT
public:
    /// A wider gap stands before row `gapRow`; -1: nowhere.
    ColorGrid(std::vector<ColorField> fields, int columns, QWidget* parent, int gapRow = -1);

    /// Marks the field of the value, none when there is no such field. Emits nothing.
    void setChosen(int value);

Q_SIGNALS:
    /// The user chose a field.
    void chosen(int value);
    /// The mouse is over a field, or a field has the keyboard's cursor.
    void pointedAt(int value);
    void leftAll();

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void leaveEvent(QEvent* event) override;

private:
    ColorGridModel* m_model;
    bool m_isMarking = false;
};

}  // namespace korvex
