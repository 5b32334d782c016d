#pragma once

#include "editor/CodeEditorLanguage.h"

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QVariant>

// One tab of a CustomTabBar. The rectangles are cached so that hit tests while the pointer
// moves need no font metrics; a null relativeRect means the text has to be measured again.
struct CustomTabElement
{
    QString text;
    QString toolTip;
    QRect relativeRect; // size of the tab, left edge at 0
    QRect absoluteRect; // place of the tab in the bar
    QRect iconRect;     // language icon
    QRect closeRect;    // close button, and the modified mark in the same place
    QVariant data;      // the owner's
    bool modified = false;
    CodeEditorLanguage language = CodeEditorLanguage::TEXT;
};
