// Texts with numbered places.
#pragma once

#include <QString>
#include <QStringList>

/// Puts the arguments into the places of a text: "%1" is the first, "%2!d!" the second, "%%" a percent sign.
/// A place without an argument stays as it is.
QString formatMessage(const QString& text, const QStringList& arguments);

/// The first five of some names, in quotation marks and cut where they are long, and how many others there
/// are.
QString listedNames(const QStringList& names);
