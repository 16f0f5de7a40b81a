// The actions, each by itself. They take the words behind their name and give what went wrong, or nothing.
#pragma once

#include "host/ui/script/words.h"

#include <functional>

class QWidget;

namespace korvex {

QString pictureAction(Words words);
QString clickAction(Words words);
QString typeAction(Words words);
QString pressAction(Words words);
QString chooseAction(Words words);
QString tickAction(Words words);
QString lookAction(Words words);
QString delayAction(Words words);
QString endAction(Words words);

/// The control that the next word names, shown and enabled, so that a user could work with it. Null, with the
/// reason in `trouble`, when there is none.
QWidget* usableControl(Words& words, QString& trouble);
/// The same for one that is known.
bool isUsable(QWidget& widget, QString& trouble);

/// Lets the event loop run until something holds, `most` milliseconds at most.
void letTimePass(int most, const std::function<bool()>& until);

/// A message on the command line.
void tell(const QString& text);

}  // namespace korvex
