#ifndef CORVANE_IWIDGETCORE_H
#define CORVANE_IWIDGETCORE_H

#include <QJsonDocument>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <QWidget>

#include "ParameterAddress.h"
#include "Value.h"

class IHostCore;
class QDomNode;
struct QMetaObject;

/*!
    \class IWidgetCore
    \brief The host's interface to every control the factory creates.

    The slot order is part of the binary interface: never reorder, insert or
    remove an operation. Every control is also a QWidget; use widgetOf() to
    reach that side.

    Controls also offer these to hosts through Qt's meta-object system
    (QMetaObject::invokeMethod), outside the binary interface:
    \list
    \li \c{QStringList handledTags()}: every description tag the control reads;
    \li \c{QMenu *createContextMenu()}: the control's context menu, its
        entries wired to the control, or null when it shows none; the caller
        owns (and deletes) the menu.
    \endlist
*/
class IWidgetCore
{
public:
    virtual ~IWidgetCore() = default;                                            // 0

    //! Configures the control from its panel-description element: every child
    //! element whose tag the control knows goes to that tag's handler.
    virtual bool configure(const QDomNode &element) = 0;                          // 1
    //! Hands \a value to the host's current target object.
    virtual bool passToHost(int value) = 0;                                       // 2
    //! Scales the design geometry by \a zoom; false (and no change) for zoom <= 0.
    virtual bool setZoom(float zoom) = 0;                                         // 3
    //! The host's current zoom factor.
    virtual float zoomFactor() const = 0;                                         // 4
    virtual void setHighlight(bool highlight) = 0;                                // 5
    virtual QMap<QString, Value> attributeMap() const = 0;                        // 6
    virtual QMap<QString, Value> &attributeMapRef() = 0;                          // 7
    virtual bool setWidgetName(const QString &name) = 0;                          // 8
    virtual QString &widgetName() = 0;                                            // 9
    //! Whether the control takes part in the host's parameter handling (always true here).
    virtual bool isParameterWidget() const = 0;                                   // 10
    virtual int addressCount() const = 0;                                         // 11
    //! The address at \a index; out-of-range indexes give a shared empty entry.
    virtual ParameterAddress &address(int index) = 0;                             // 12
    //! Assigns \a values to the addresses in order.
    virtual bool applyValues(const QList<Value> &values) = 0;                     // 13
    //! Rebinds the addresses from maps with "prmAddr", "dev_uniq_id", "zone_uniq_id", "temporaryLink".
    virtual void updateAddresses(const QList<QVariantMap> &addresses) = 0;        // 14
    virtual QList<ParameterAddress> validAddresses() const = 0;                   // 15
    //! "prmAddr" of every valid address to its current value.
    virtual QMap<QString, Value> addressValues() const = 0;                       // 16
    //! The key maps of the addresses, in order.
    virtual QVariantList addressList() const = 0;                                 // 17
    //! Reads address data from \a document when it holds any, and returns the control's address data.
    virtual QJsonDocument exchangeAddressData(const QJsonDocument &document) = 0; // 18
    virtual QList<QVariant> &sideList() = 0;                                      // 19
    //! Takes "ui_prm_val" and "ui_prm_str" from every map that names one of the control's parameters.
    virtual bool applyAddressValues(const QList<QVariantMap> &values) = 0;        // 20
    //! The parameter named by \a parameter changed: matching entries re-read their value and the control repaints.
    virtual void notifyValueChanged(const QVariantMap &parameter) = 0;            // 21
    virtual const QMetaObject *widgetMetaObject() const = 0;                      // 22
    virtual void refresh() = 0;                                                   // 23
    virtual bool acceptOperation(int operation, const QVariant &first, const QVariant &second) = 0; // 24
    virtual bool acceptCommand(const QVariant &command) = 0;                      // 25
    virtual void setActive(bool active) = 0;                                      // 26
    virtual IHostCore *hostCore() const = 0;                                      // 27
};

//! The QWidget side of a control.
inline QWidget *widgetOf(IWidgetCore *core)
{
    return dynamic_cast<QWidget *>(core);
}

//! The control a widget is, or null for any other widget (a page, a tile, a control's own parts).
inline IWidgetCore *coreOf(QObject *widget)
{
    return dynamic_cast<IWidgetCore *>(widget);
}

#endif
