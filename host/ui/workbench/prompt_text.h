// A prompt as the command line shows it: one line, its keywords apart.
#pragma once

#include "host/editor/input_source.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace korvex {

/// A piece of a prompt.
struct PromptPart {
    QString text;
    bool isKeyword = false;  ///< it may be clicked: the text is the answer then
};

/// The prompt in pieces; what stands in brackets, parted by "/", is a keyword where the request takes it as
/// one. Line ends become blanks.
std::vector<PromptPart> promptParts(const InputRequest& request);
/// The same as rich text, keywords as links to "keyword:" and their text.
QString promptHtml(const InputRequest& request);
/// The keyword of such a link; empty for any other link.
QString linkedKeyword(const QString& link);

/// The keywords that may be answered, as the user reads them.
QStringList promptKeywords(const InputRequest& request);
/// What the user is to do, for the status bar.
QString promptHint(const InputRequest& request);

}  // namespace korvex
