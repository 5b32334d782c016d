#pragma once

#include <QtCore/QString>
#include <QtGui/QTextCharFormat>

// One named row of a colour table: the factory format beside the one in use.
struct HighlightProperties
{
    QString label;
    QTextCharFormat defaultFormat; // set by ColorSettings::Initialize only
    QTextCharFormat format;
    bool fontStylesEnabled = false; // the preferences may edit bold, italic and underline
};
