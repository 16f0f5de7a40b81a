// Each model that a view shows is watched, and one that contradicts itself fails its test.
#include "tests/module/layer_states/manager/states_window_fixture.h"

#include <QStringListModel>

#include <gtest/gtest-spi.h>

namespace korvex::test {
namespace {

/// Tells of a row that it has not.
class LyingModel : public QStringListModel {
public:
    using QStringListModel::QStringListModel;
    void lie() {
        beginInsertRows({}, 0, 0);
        endInsertRows();
    }
};

using ModelWatch = StatesWindowTest;

TEST_F(ModelWatch, FindsAModelThatContradictsItself) {
    LyingModel model(QStringList{"one"});
    QTableView view;
    view.setModel(&model);
    view.show();
    QCoreApplication::processEvents();
    EXPECT_NONFATAL_FAILURE(model.lie(), "A model contradicts itself");
}

TEST_F(ModelWatch, WatchesTheModelsOfAllWindows) {
    showPalette();
    run(L"LAYERSTATESAVE\nTYPE IDC_LAYERSTATESAVE_COMBO Plan\nCLICK IDOK\nQSAVE\n");
    run(L"LAYERSTATE\nCLICK IDC_LAYERMAN_EDIT\nCLICK \"IDC_LAYERSTATE_LIST\" \"0,Name\"\nCLICK "
        L"IDC_LAYERSTATE_DEL\nCLICK IDC_LAYERSTATE_ADD\nDELAY 50\nPRESS window Esc\nPRESS window Esc\nPRESS "
        L"window Esc\n");
    EXPECT_EQ(failures, Lines());
    const QStringList watched = watchedModels();
    for (const char* const model : {"KvLayerListModel", "QTreeModel", "KvLayerStateListModel",
                                    "KvEditLayerStateModel", "KvSortedRows"}) {
        EXPECT_TRUE(watched.contains(model)) << model << watched.join(' ').toStdString();
    }
}

}  // namespace
}  // namespace korvex::test
