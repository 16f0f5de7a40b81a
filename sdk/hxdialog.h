// The dialog framework: windows and controls by identifier, dialogs from layouts of the resource library,
// message boxes, menus. Texts are wide, identifiers ("IDC_...", "IDD_...", "IDR_...") are Qt object names.
#pragma once

#include "hxtypes.h"

#include <QDialog>

class QEvent;
class QMenu;

/// Kinds of message boxes: one of the button sets, one of the icons, one of the defaults, added up.
enum HxMessageBoxType : unsigned {
    MB_OK = 0,
    MB_OKCANCEL = 1,
    MB_YESNOCANCEL = 3,
    MB_YESNO = 4,
    MB_RETRYCANCEL = 5,
    MB_ICONERROR = 0x10,
    MB_ICONQUESTION = 0x20,
    MB_ICONEXCLAMATION = 0x30,
    MB_ICONWARNING = 0x30,
    MB_ICONINFORMATION = 0x40,
    MB_DEFBUTTON2 = 0x100,
    MB_DEFBUTTON3 = 0x200,
};

/// What ends a dialog or a message box. Closing a box that has no such button in another way gives IDCANCEL;
/// one that has no Cancel gives its last button (No, OK).
enum HxDialogResult : int {
    IDOK = 1,
    IDCANCEL = 2,
    IDRETRY = 4,
    IDYES = 6,
    IDNO = 7,
};

/// Shows a message and waits for the answer (HxDialogResult). A null caption is the host's product name; a
/// null parent the open dialog or the main window. The text is plain, its line ends are kept. In a script the
/// next line of the script decides: a button's name (docs/scripting.md).
HXSDK_API int hxuiMessageBox(QWidget* parent, const wchar_t* text, const wchar_t* caption = nullptr,
                             unsigned type = MB_OK);

/// The caption of the host's message boxes.
HXSDK_API const wchar_t* hxProductName();

/// A menu of the current resource library, from a layout whose top widget is a QMenu; its actions under their
/// object names, texts as in dialog layouts. The caller owns it (or the parent). Null when there is none of
/// that name; the reason is in the host's log.
HXSDK_API QMenu* hxuiLoadMenu(const char* name, QWidget* parent = nullptr);

/// Makes a widget for layouts; the parent owns it.
using HxWidgetFactory = QWidget* (*)(QWidget* parent);
/// Layouts may name this class from now on. A null factory takes the class back; so does unloading the module
/// that the factory lies in. False for an empty name, and for one that another module has registered.
HXSDK_API bool hxuiRegisterWidget(const char* className, HxWidgetFactory factory);

/// A window or control as dialog code handles it. Owns nothing; good as long as its widget is.
class HXSDK_API CWnd {
public:
    explicit CWnd(QWidget* window = nullptr) : m_window(window) {}
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// May be null.
    QWidget* window() const { return m_window; }
    /// The control of that object name below the window; null when there is none.
    QWidget* GetDlgItem(const char* id) const;
    /// The same when it is of the class; null otherwise.
    template <class Control>
    Control* GetDlgItem(const char* id) const {
        return qobject_cast<Control*>(GetDlgItem(id));
    }
    /// hxuiMessageBox before this window.
    int MessageBox(const wchar_t* text, const wchar_t* caption = nullptr, unsigned type = MB_OK) const;

protected:
    void setWindow(QWidget* window) { m_window = window; }

private:
    QWidget* m_window;
};

/// One exchange between a dialog's controls and its variables.
class HXSDK_API CDataExchange {
public:
    CDataExchange(CWnd* dialog, bool saveAndValidate)
        : m_pDlgWnd(dialog), m_bSaveAndValidate(saveAndValidate) {}
    CWnd* m_pDlgWnd;
    bool m_bSaveAndValidate;  ///< true: from the controls to the variables
    /// Controls that were asked for and do not exist or are of another class.
    int m_missing = 0;
    /// Counts one; the host's log tells which.
    void addMissing(const char* id);
};

/// Sets the variable to the control; null, counted as missing, when it does not exist or is of another class.
template <class Control>
void DDX_Control(CDataExchange* exchange, const char* id, Control*& control) {
    control = exchange->m_pDlgWnd->GetDlgItem<Control>(id);
    if (!control) exchange->addMissing(id);
}
/// A check box: 0 clear, 1 ticked, 2 in between.
HXSDK_API void DDX_Check(CDataExchange* exchange, const char* id, int& value);

/// A dialog. Its controls come from a layout, or are made by the derived class before DoModal.
///
/// A layout is a Qt Designer file of the resource library that is current when the dialog is made:
/// ":/<library>/<name>.ui", the library's file name without extension and without "Res" at its end. The
/// properties of its top widget become those of the dialog, its controls children of the dialog. A text
/// "@<number>" in it (title, text, tool tip, placeholder, item, header) stands for that string of the
/// library; one that the library lacks stays as it is. Buttons "IDOK", "IDCANCEL" and "IDHELP" call OnOK,
/// OnCancel and OnHelp unless the derived class has connected their clicked(); others are connected by the
/// derived class, by name: connect(GetDlgItem("IDC_BUTTON_NEW"), SIGNAL(clicked()), SLOT(OnButtonNew())).
/// Enter clicks the default button, "IDOK" when the layout names none. While its DoModal runs, the module of
/// a dialog is not unloaded.
class HXSDK_API HxUiBaseDialog : public QDialog, public CWnd {
    Q_OBJECT
public:
    /// Null layout: none. Null parent: the main window, when there is one.
    explicit HxUiBaseDialog(const char* layout, QWidget* parent = nullptr);
    ~HxUiBaseDialog() override;
    using QWidget::window;

    /// False when the layout is missing or damaged; the reason is in the host's log.
    bool hasLayout() const { return m_hasLayout; }
    /// Calls OnInitDialog, shows the dialog and waits until it ends. The result of EndDialog; IDCANCEL when
    /// it was closed otherwise; -1 when its layout is missing or it is open already. In a script the script's
    /// next lines act on it (docs/scripting.md).
    virtual int DoModal();
    /// Ends DoModal with a result. Null or negative ones too. The first call counts; one from OnInitDialog
    /// keeps the dialog from being shown.
    void EndDialog(int result);
    /// Runs DoDataExchange. False when controls were missing.
    bool UpdateData(bool saveAndValidate = true);
    /// To the middle of the parent, or of the screen.
    void CenterWindow();

protected:
    /// Before the dialog is shown. The base class runs UpdateData(false). The result has no effect.
    virtual bool OnInitDialog();
    virtual void DoDataExchange(CDataExchange* exchange);
    /// Sees each key, mouse, focus and input-method event of the dialog's widgets, and of their popups,
    /// before they do. One that a widget does not accept comes again with the widget's parent. True: it goes
    /// no further.
    virtual bool PreTranslateMessage(QObject* receiver, QEvent* event);
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void reject() override;

protected Q_SLOTS:
    /// UpdateData(true), then IDOK.
    virtual void OnOK();
    /// Esc and the close button of the title bar come here, too.
    virtual void OnCancel();
    /// Also by F1. Opens the guide's page of property "helpPage" ("x.md"); without one, "What's This".
    virtual void OnHelp();

private Q_SLOTS:
    void standardButtonClicked();

private:
    void build(const char* layout);
    void bindStandardButtons();
    int runLoop();

    bool m_hasLayout = true;
    bool m_isRunning = false;  ///< in DoModal
    bool m_hasEnded = false;   ///< EndDialog was called
    int m_result = IDCANCEL;
};
