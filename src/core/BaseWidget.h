#ifndef CORVANE_BASEWIDGET_H
#define CORVANE_BASEWIDGET_H

#include <QPoint>
#include <QSize>
#include <QVector>
#include <QWidget>

#include <corvane/IHostCore.h>
#include <corvane/IWidgetCore.h>
#include <corvane/ParameterManagement.h>

#include "AddressBinding.h"
#include "TagTable.h"

class QAction;
class QMenu;
class QMouseEvent;

/*!
    \class BaseWidget
    \brief The common base of every control, indicator, graph and panel.

    Gives every control the same life: construction with the host's two
    service objects, configuration from one element of the panel
    description, binding to device parameters, reading and showing their
    values, the context menu for the host's parameter sets, drag of a
    parameter reference, and scaling with the host's zoom.

    Requests never carry computed values: a control sends a position (kind
    0), a text (kind 1), a step (kind 2) or asks for the default (kind 3), and
    the host's database does the rest. Requests on an index outside the
    address list, without a registry, or on a parameter that fails the
    existence check (for controls that check) are dropped without a word.

    Address templates: a "prmAddr" may hold placeholders in braces, such as
    "{ChNum}". The control keeps the text as written and binds the address
    with every placeholder replaced by its current value (see
    setPlaceholder()); an address whose placeholders are not all known yet
    stays unbound. The addresses, their templates and the placeholders are
    kept by an AddressBinding.

    A value change is dispatched once: a change of one of the control's own
    addresses goes to ownValueChanged(), a change of a selector (an address
    with an "AddrType") to typedAddressChanged(). Subclasses reimplement the
    hook they need and never test the address type themselves.
*/
class BaseWidget : public QWidget, public IWidgetCore
{
    Q_OBJECT
    // The meaning of each address index, for hosts and panelview --describe.
    Q_CLASSINFO("Addresses", "0: the parameter the control shows and changes")
    Q_PROPERTY(bool highlight READ highlight WRITE setHighlight)
    Q_PROPERTY(bool active READ isActive WRITE setActive)
    Q_PROPERTY(bool dragEnabled READ dragEnabled WRITE setDragEnabled)
    Q_PROPERTY(bool visibleParameterName READ visibleParameterName WRITE setVisibleParameterName)
    Q_PROPERTY(bool contextMenuVisible READ contextMenuVisible WRITE setContextMenuVisible)
    Q_PROPERTY(int currentAddressIndex READ currentAddressIndex)
    Q_PROPERTY(int tabOrder READ tabOrder)
    Q_PROPERTY(QString replaceParameterName READ replaceParameterName)
    Q_PROPERTY(QString findKey READ findKey)

public:
    BaseWidget(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~BaseWidget() override;

    // Description handlers, in the order tags are registered. They are this
    // class's first own virtual operations, in this order: binary interface.
    virtual bool readRect(const QDomElement &e);
    virtual bool readFocus(const QDomElement &e);
    virtual bool readLayout(const QDomElement &e);
    virtual bool readFont(const QDomElement &e);
    virtual bool readFontSize(const QDomElement &e);
    virtual bool readAddress(const QDomElement &e);
    virtual bool readAddressList(const QDomElement &e);
    virtual bool readDragEnabled(const QDomElement &e);
    virtual bool readBaseAddress(const QDomElement &e);
    virtual bool readReplaceParameterName(const QDomElement &e);
    virtual bool readVisibleParameterName(const QDomElement &e);
    virtual bool readContextMenuVisible(const QDomElement &e);
    virtual bool readFindKey(const QDomElement &e);
    virtual bool readRemoteControlList(const QDomElement &e);
    virtual bool readTabOrder(const QDomElement &e);
    virtual bool readFrontFocus(const QDomElement &e);

    static const TagTable &tags();
    virtual const TagTable &tagTable() const { return tags(); }
    //! Every description tag this control reads.
    Q_INVOKABLE QStringList handledTags() const { return tagTable().tags(); }
    //! The context menu with its entries wired to this control, or null when it shows none; the caller owns it.
    Q_INVOKABLE QMenu *createContextMenu();

    // IWidgetCore
    bool configure(const QDomNode &element) override;
    bool passToHost(int value) override;
    bool setZoom(float zoom) override;
    float zoomFactor() const override;
    void setHighlight(bool highlight) override;
    QMap<QString, Value> attributeMap() const override { return m_attributes; }
    QMap<QString, Value> &attributeMapRef() override { return m_attributes; }
    bool setWidgetName(const QString &name) override;
    QString &widgetName() override { return m_name; }
    bool isParameterWidget() const override { return true; }
    int addressCount() const override { return m_binding.count(); }
    ParameterAddress &address(int index) override;
    bool applyValues(const QList<Value> &values) override;
    void updateAddresses(const QList<QVariantMap> &addresses) override;
    QList<ParameterAddress> validAddresses() const override;
    QMap<QString, Value> addressValues() const override;
    QVariantList addressList() const override;
    QJsonDocument exchangeAddressData(const QJsonDocument &document) override;
    QList<QVariant> &sideList() override { return m_sideList; }
    bool applyAddressValues(const QList<QVariantMap> &values) override;
    void notifyValueChanged(const QVariantMap &parameter) override;
    const QMetaObject *widgetMetaObject() const override { return metaObject(); }
    void refresh() override { }
    bool acceptOperation(int, const QVariant &, const QVariant &) override { return false; }
    bool acceptCommand(const QVariant &) override { return false; }
    void setActive(bool active) override;
    IHostCore *hostCore() const override { return m_hostCore; }

    ParameterManagementRegistry *registry() const { return m_registry; }
    const ParameterAddress &addressAt(int index) const;
    const AddressBinding &binding() const { return m_binding; }
    //! True when \a index is a selector (has an "AddrType") rather than one of the control's own addresses.
    bool isSelector(int index) const { return m_binding.isSelector(index); }
    //! The number of addresses that are the control's own; they come before the selectors.
    int ownAddressCount() const { return m_binding.ownCount(); }
    bool highlight() const { return m_highlight; }
    //! Active when the host marks the control's panel active or the control was set active itself.
    bool isActive() const { return m_active || (m_hostCore && m_hostCore->isActive(this)); }
    bool dragEnabled() const { return m_dragEnabled; }
    void setDragEnabled(bool enabled) { m_dragEnabled = enabled; }
    bool visibleParameterName() const { return m_visibleParameterName; }
    void setVisibleParameterName(bool visible) { m_visibleParameterName = visible; }
    bool contextMenuVisible() const { return m_contextMenuVisible; }
    void setContextMenuVisible(bool visible) { m_contextMenuVisible = visible; }
    int currentAddressIndex() const { return m_currentAddressIndex; }
    int tabOrder() const { return m_tabOrder; }
    QString replaceParameterName() const { return m_replaceParameterName; }
    QString findKey() const { return m_findKey; }
    QPoint designPosition() const { return m_designPosition; }
    QSize designSize() const { return m_designSize; }
    QVariantMap baseAddress() const { return m_baseAddress; }
    QStringList remoteControlList() const { return m_remoteControlList; }

    // Requests.
    virtual bool requestPosition(double numerator, double denominator, int setType, int index = 0);
    virtual bool requestText(const QString &text, int index = 0);
    virtual bool requestStep(int step, int index = 0);
    virtual bool requestDefault(int index = 0);

    // Reading.
    virtual QString positionText(int index = 0) const;
    virtual QString displayText(int index = 0) const;
    //! The position times \a steps, plus a half, truncated and clamped to the int range;
    //! 0 outside the list or for a text that is not a finite number.
    virtual int stepOfPosition(int steps, int index = 0) const;
    //! True when the position is not a finite number or is 0 or less; false outside the list.
    virtual bool isOff(int index = 0) const;
    //! Re-reads the value of \a index from the host; true when it changed.
    virtual bool readAddressValue(int index);
    //! The position text read as a number, 0 when it is not a finite one.
    double position(int index = 0) const;
    //! True when the position text of \a index holds a finite number.
    bool hasPosition(int index = 0) const;

    //! Parses, appends and registers one address; false when it names no device and the control has no owner.
    //! Addresses with an \a addrType (selectors) stay behind the others.
    bool appendAddress(const QDomElement &e, const QString &addrType = QString());
    bool appendAddress(QVariantMap keys, const QString &addrType = QString());
    //! Fills an empty "dev_uniq_id" (and "dev_model") from the owner device; false when there is none.
    bool completeDevice(QVariantMap &keys) const;

    // Selection.
    virtual bool selectAddress(int index, bool report = true);

    //! Replaces a placeholder of the address templates and rebinds what it changes.
    void setPlaceholder(const QString &name, const QString &value);
    QString placeholder(const QString &name) const { return m_binding.placeholder(name); }

    //! The text payload of a parameter drag: the address's keys as JSON.
    virtual QString dragPayload(int index) const;

    //! Point size for a design size at the current zoom, corrected for the screen.
    qreal scaledPointSize(qreal designPointSize, float zoom) const;

    // Helpers for reading description elements.
    static QVariantMap parseAddressKeys(const QDomElement &e);
    static QColor parseColor(const QString &text, const QColor &fallback = QColor());
    static QRect parseRect(const QDomElement &e);
    static bool isTrue(const QDomElement &e) { return e.text() == QLatin1String("true"); }
    static bool isTrueIgnoringCase(const QDomElement &e) { return e.text().toLower() == QLatin1String("true"); }

    //! Sets \a member to \a value and repaints, only when that changes it; true when it did.
    template <class T>
    bool updateMember(T &member, const T &value)
    {
        if (member == value)
            return false;
        member = value;
        update();
        return true;
    }

public slots:
    void selectedMenu(QAction *action);

protected:
    //! Keys of the device that owns this control on the host side; empty when none.
    virtual QVariantMap ownerDevice() const;
    //! Lets a variant add keys (a zone, say) to an address before it is bound.
    virtual void completeAddressKeys(QVariantMap &keys) const { Q_UNUSED(keys) }
    //! Whether requests first check that the parameter exists.
    virtual bool checksParameterExistence() const { return false; }
    //! Called after the value of the control's own address \a index changed; repaints by default.
    virtual void ownValueChanged(int index);
    //! Called after the address at \a index was bound to another parameter.
    virtual void addressRebound(int index) { dispatchValueChanged(index); }
    //! Whether a notification that matched an entry repaints even when its value stayed the same.
    virtual bool repaintsOnMatch() const { return true; }
    //! The two texts reported when \a index is selected.
    virtual void selectionTexts(int index, QString &first, QString &second) const;

    //! Binds entry \a index to \a keys: unregisters the old parameter, registers the new one, re-reads it.
    void rebindAddress(int index, const QVariantMap &keys);
    bool registerAddress(const ParameterAddress &address);
    void unregisterAddress(const ParameterAddress &address);
    //! Index of the first address of type \a addrType ("AddrType" key), or -1.
    int indexOfAddressType(const QString &addrType) const;
    //! Called when the selector \a index, of type \a addrType, changed value or was rebound.
    virtual void typedAddressChanged(const QString &addrType, int index) { Q_UNUSED(addrType) Q_UNUSED(index) }

    // Context-menu operations.
    virtual void buildContextMenu(QMenu *menu);
    virtual void addToParameterSet(const QVariantMap &data);
    virtual void addNewParameterSet();
    virtual void addToRemoteControlList();
    virtual void addToParameterLinkGroup(const QVariantMap &data);
    virtual void addNewGroup();
    //! Any other menu entry; false when not handled.
    virtual bool menuEntryChosen(QAction *action) { Q_UNUSED(action) return false; }

    // Mouse conventions shared by the value controls.
    virtual void pressNotified(QMouseEvent *event);
    virtual void controlClick(QMouseEvent *event);
    virtual void linkClick(QMouseEvent *event);
    //! Hands a press with Control to the selection handling, with Control and Shift to the link handling; true when it did.
    bool handOverModifierPress(QMouseEvent *event);
    //! With drag enabled and exactly Control held, starts a parameter drag once the mouse moved far enough.
    bool maybeStartParameterDrag(QMouseEvent *event);

    virtual QPoint scaledPosition(const QPoint &design, float zoom) const;
    virtual QSize scaledSize(const QSize &design, float zoom) const;

    void contextMenuEvent(QContextMenuEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void childEvent(QChildEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    //! Draws the selection frame; controls call it after their own painting.
    void paintBase(QPainter &painter);

    //! Sends a request of \a kind with \a arguments on \a index, behind the guards every request passes.
    bool sendRequest(int kind, int index, const QMap<QString, QString> &arguments);

private:
    void applyFont(float zoom);
    //! Hands a value change of \a index to ownValueChanged() or, for a selector, to typedAddressChanged().
    void dispatchValueChanged(int index);
    void registerEntry(int index);
    void unregisterEntry(int index);
    bool changeRegistration(bool add, AddressBinding::Category category, const ParameterAddress &address);

    IHostCore *m_hostCore;
    ParameterManagementRegistry *m_registry;
    QPoint m_designPosition;
    QSize m_designSize;
    bool m_highlight = false;
    bool m_secondFlag = true;
    AddressBinding m_binding;
    QMap<QString, Value> m_attributes;
    int m_currentAddressIndex = 0;
    QList<QVariant> m_sideList;
    QString m_name;
    bool m_visibleParameterName = true;
    bool m_contextMenuVisible = true;
    bool m_active = false;
    int m_index = -1;

    bool m_dragEnabled = false;
    QVariantMap m_baseAddress;
    QString m_replaceParameterName;
    QString m_findKey;
    QStringList m_remoteControlList;
    int m_tabOrder = -1;
    qreal m_designPointSize = 9.0;
    QPoint m_pressPoint;
};

#endif
