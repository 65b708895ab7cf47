#ifndef CORVANE_SHAREDKEYS_H
#define CORVANE_SHAREDKEYS_H

#include <QString>

/*!
    The one shared copy of a well-known key of parameter addresses and
    values ("prmAddr", "ui_prm_val", ...) equal to \a key, or \a key itself
    when it is not one of them. Maps that store the shared copy hold no key
    text of their own, however many controls keep one.
*/
const QString &sharedKey(const QString &key);

#endif
