// Where the manager's window and splitter stand, kept in the configuration service.
#include "layer_prop_manager_dlg.h"

#include "manager_ui/grid/layer_list_ctrl.h"

#include "hxconfig.h"

#include <QApplication>
#include <QScreen>
#include <QSplitter>
#include <QToolButton>

#include <cstdlib>
#include <cwchar>

namespace {

constexpr wchar_t kRectangle[] = L"LayerDialog/MainWindowRect";
constexpr wchar_t kDialogSplit[] = L"LayerDialog/DialogSplitPos";
constexpr wchar_t kPaletteSplit[] = L"LayerDialog/PalletSplitPos";
constexpr int kFirstSplit = 170;
constexpr int kWidestSplit = 10000;
constexpr int kSmallestSide = 100;

CStdStr<wchar_t> read(const wchar_t* path) {
    VrexVariant value;
    KorvexConfig* const config = vrexConfig();
    return config && config->getValue(kHxConfigUser, path, value) == 0 ? CStdStr<wchar_t>(value.asString())
                                                                       : CStdStr<wchar_t>();
}

void write(const wchar_t* path, const CStdStr<wchar_t>& value) {
    if (KorvexConfig* const config = vrexConfig()) {
        config->setValue(kHxConfigUser, path, VrexVariant(value.c_str()));
    }
}

bool isOnAScreen(const QRect& rectangle) {
    const QList<QScreen*> screens = QApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
        return screen->availableGeometry().intersects(rectangle);
    });
}

}  // namespace

void KvLayerPropManagerDlg::SaveWindowPos(int x, int y, int width, int height, int split) {
    CStdStr<wchar_t> text;
    text.Format(L"%d", split);
    write(m_isPalette ? kPaletteSplit : kDialogSplit, text);
    if (m_isPalette) return;
    text.Format(L"%d %d %d %d", x, y, width, height);
    write(kRectangle, text);
}

bool KvLayerPropManagerDlg::ReadWindowPos(int& x, int& y, int& width, int& height) {
    int numbers[4] = {};
    if (std::swscanf(read(kRectangle).c_str(), L"%d %d %d %d", &numbers[0], &numbers[1], &numbers[2],
                     &numbers[3]) != 4) {
        return false;
    }
    x = numbers[0];
    y = numbers[1];
    width = numbers[2];
    height = numbers[3];
    return true;
}

void KvLayerPropManagerDlg::initPlacement() {
    int split = kFirstSplit;
    std::swscanf(read(m_isPalette ? kPaletteSplit : kDialogSplit).c_str(), L"%d", &split);
    split = std::clamp(split, -kWidestSplit, kWidestSplit);
    showFilterPane(split > 0, split == 0 ? kFirstSplit : std::abs(split));
    if (m_isPalette) return;
    QRect place;
    int width = 0;
    int height = 0;
    int x = 0;
    int y = 0;
    if (!ReadWindowPos(x, y, width, height)) return;
    place = QRect(x, y, width, height);
    if (width >= kSmallestSide && height >= kSmallestSide && isOnAScreen(place)) setGeometry(place);
}

void KvLayerPropManagerDlg::savePlacement() {
    if (!m_list) return;
    SaveColInfoInReg();
    const QRect place = geometry();
    SaveWindowPos(place.x(), place.y(), place.width(), place.height(), m_isPaneShown ? m_split : -m_split);
}

// ---- the filter pane ----

void KvLayerPropManagerDlg::OnSplitterMoved(int position) { m_split = std::max(position, 1); }

void KvLayerPropManagerDlg::showFilterPane(bool show, int width) {
    m_split = width;
    m_isPaneShown = show;
    m_controls.filterPane->setVisible(show);
    m_controls.expand->setVisible(!show);
    if (show) m_controls.splitter->setSizes({width, std::max(this->width() - width, width)});
}

void KvLayerPropManagerDlg::collapseFilters() {
    showFilterPane(false, m_split);
    m_list->setFocus();
}

void KvLayerPropManagerDlg::expandFilters() { showFilterPane(true, m_split); }
