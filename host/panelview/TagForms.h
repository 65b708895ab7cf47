#ifndef CORVANE_HOST_TAGFORMS_H
#define CORVANE_HOST_TAGFORMS_H

#include <QString>
#include <QStringList>

/*!
    \namespace TagForms
    \brief What the text of each description tag must look like.

    The controls name the tags they read (handledTags()); this table says
    what each of them takes, so that the checker, --describe and the schema
    agree. Child elements that a handler walks are listed under the parent
    tag and are looked up as "Parent/Child". A test keeps the table complete
    against every tag the plug-in reads.
*/
namespace TagForms {

enum Form {
    Text,            // free text
    Boolean,         // only the exact text "true" is true
    BooleanAnyCase,  // "true" in any case is true
    Whole,           // a whole number
    Whole16,         // a whole number that fits in 16 signed bits
    Number,          // a decimal number
    NumberList,      // numbers separated by commas
    Position,        // a decimal number from 0 to 1
    Colour,          // R,G,B or R,G,B,A
    Rect,            // x, y, width, height attributes
    Point,           // x, y attributes or "x,y"
    Size,            // width, height attributes or "w,h"
    Image,           // the name of an image file
    PanelFile,       // the name of a panel file
    Address,         // one address: keys as attributes or child elements
    AddressList,     // <Address> children
    Children,        // the child elements listed in children
    Controls,        // <Widget> children, built as a page
};

struct Entry
{
    Form form = Text;
    QString takes;        // for people: what the text or the children are
    QStringList children; // Children and Controls: the child tags read; "*" for any
};

//! The entry of \a parent "/" \a tag, else of \a tag; null when the table has neither.
const Entry *find(const QString &tag, const QString &parent = QString());
//! Every top-level tag of the table, sorted.
QStringList tags();
//! A short name of \a form ("boolean", "colour", ...).
QString formName(Form form);

} // namespace TagForms

#endif
