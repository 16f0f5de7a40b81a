// The application object: what a handler throws ends in a message, and not the program.
#pragma once

#include <QApplication>

namespace korvex {

class HostApplication : public QApplication {
    Q_OBJECT
public:
    HostApplication(int& count, char** arguments);
    bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace korvex
