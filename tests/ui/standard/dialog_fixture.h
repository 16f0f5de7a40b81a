// Standard dialogs over one new drawing and a fresh profile, worked by mouse and keyboard.
#pragma once

#include "tests/editor/editor_fixture.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace korvex::test {

/// The control of that name; the test ends when there is none.
template <class Control>
Control& control(QWidget& window, const char* name) {
    auto* const found = window.findChild<Control*>(name);
    if (!found) {
        throw std::runtime_error(std::string("there is no control ") + name);
    }
    return *found;
}

inline void click(QWidget& window, const char* name) {
    QTest::mouseClick(&control<QWidget>(window, name), Qt::LeftButton);
}

/// Types over what is in a field.
inline void type(QWidget& window, const char* name, const QString& text) {
    auto& field = control<QWidget>(window, name);
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, text);
}

class StandardDialogTest : public EditorTest {
protected:
    /// Runs `call`, and `work` in the modal dialog of that name that it opens; closes what stays open.
    void inDialog(const char* name, const std::function<void(QDialog&)>& work,
                  const std::function<void()>& call) {
        bool worked = false;
        later(name, [&](QDialog& dialog) {
            worked = true;
            work(dialog);
        });
        call();
        EXPECT_TRUE(worked) << name << " was not opened";
    }
    /// Does something in the dialog of that name as soon as it is open. Nests: call it before the event that
    /// opens the inner dialog.
    void later(const char* name, std::function<void(QDialog&)> work, int patience = 200) {
        QTimer::singleShot(10, &m_waiting, [this, name, work = std::move(work), patience] {
            const QPointer<QDialog> dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || dialog->objectName() != name) {
                if (patience > 0) {
                    later(name, work, patience - 1);
                } else if (dialog) {
                    ADD_FAILURE() << "waiting for " << name << " in " << dialog->objectName().toStdString();
                    dialog->reject();
                }
                return;
            }
            try {
                EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
                work(*dialog);
            } catch (const std::exception& error) {
                ADD_FAILURE() << error.what();
            }
            if (dialog && dialog->isVisible()) {
                dialog->reject();
            }
        });
    }

private:
    QObject m_waiting;  ///< with the test ends what still waits
};

}  // namespace korvex::test
