// Virtual-table layout that hosts compile against: IWidgetCore's slots,
// Value's slots and BaseWidget's first own virtual operations. A host built
// from its own copy of these declarations calls by slot, so a reordered
// declaration calls the wrong function.
#include "core/BaseWidget.h"
#include "support/RecordingHost.h"

#include <corvane/IWidgetCore.h>
#include <corvane/ParameterManagement.h>
#include <corvane/Value.h>

#include <QDomDocument>
#include <QtTest>

#include <cstdint>
#include <cstring>
#include <new>

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#define ITANIUM_MEMBER_POINTERS 1
#endif

namespace {

// Slot index of a virtual member function, read from the member pointer
// (Itanium C++ ABI on x86: an odd pointer field is 1 + the byte offset of
// the slot in the virtual table); -1 for a non-virtual function.
template <typename M>
int slotOf(M member)
{
    struct Representation
    {
        std::uintptr_t ptr;
        std::ptrdiff_t adj;
    };
    static_assert(sizeof(M) == sizeof(Representation), "unexpected member pointer size");
    Representation r;
    std::memcpy(&r, &member, sizeof r);
    if (!(r.ptr & 1))
        return -1;
    return int((r.ptr - 1) / sizeof(void *));
}

// The first virtual operation a class adds after QWidget's.
struct AfterQWidget : QWidget
{
    virtual void first() = 0;
};

} // namespace

// Value and BaseWidget as a host header declares them. Outside the anonymous
// namespace: the compiler must not conclude that no object of these types
// exists and resolve the calls statically.
namespace HostHeader {

class HostValue
{
public:
    virtual bool set(const QString &key, const QString &text) = 0;
    virtual QString text(const QString &key) const = 0;
    virtual QStringList keys() const = 0;
    virtual bool remove(const QString &key) = 0;
    virtual bool assign(const Value &other) = 0;
    virtual bool isEmpty() const = 0;
    virtual ~HostValue() = default;
};

class HostBaseWidget : public QWidget
{
public:
    virtual bool readRect(const QDomElement &e) = 0;
    virtual bool readFocus(const QDomElement &e) = 0;
    virtual bool readLayout(const QDomElement &e) = 0;
    virtual bool readFont(const QDomElement &e) = 0;
    virtual bool readFontSize(const QDomElement &e) = 0;
    virtual bool readAddress(const QDomElement &e) = 0;
    virtual bool readAddressList(const QDomElement &e) = 0;
    virtual bool readDragEnabled(const QDomElement &e) = 0;
    virtual bool readBaseAddress(const QDomElement &e) = 0;
    virtual bool readReplaceParameterName(const QDomElement &e) = 0;
    virtual bool readVisibleParameterName(const QDomElement &e) = 0;
    virtual bool readContextMenuVisible(const QDomElement &e) = 0;
    virtual bool readFindKey(const QDomElement &e) = 0;
    virtual bool readRemoteControlList(const QDomElement &e) = 0;
    virtual bool readTabOrder(const QDomElement &e) = 0;
    virtual bool readFrontFocus(const QDomElement &e) = 0;
};

} // namespace HostHeader

using HostHeader::HostBaseWidget;
using HostHeader::HostValue;

namespace {

using Handler = bool (BaseWidget::*)(const QDomElement &);
using HostHandler = bool (HostBaseWidget::*)(const QDomElement &);

struct HandlerRow
{
    const char *tag;
    Handler library;
    HostHandler host;
};

// In the order the tags are listed for hosts.
const HandlerRow handlerRows[] = {
    { "Rect", &BaseWidget::readRect, &HostBaseWidget::readRect },
    { "Focus", &BaseWidget::readFocus, &HostBaseWidget::readFocus },
    { "Layout", &BaseWidget::readLayout, &HostBaseWidget::readLayout },
    { "Font", &BaseWidget::readFont, &HostBaseWidget::readFont },
    { "FontSize", &BaseWidget::readFontSize, &HostBaseWidget::readFontSize },
    { "Address", &BaseWidget::readAddress, &HostBaseWidget::readAddress },
    { "AddressList", &BaseWidget::readAddressList, &HostBaseWidget::readAddressList },
    { "DragEnabled", &BaseWidget::readDragEnabled, &HostBaseWidget::readDragEnabled },
    { "BaseAddress", &BaseWidget::readBaseAddress, &HostBaseWidget::readBaseAddress },
    { "ReplaceParameterName", &BaseWidget::readReplaceParameterName, &HostBaseWidget::readReplaceParameterName },
    { "VisibleParameterName", &BaseWidget::readVisibleParameterName, &HostBaseWidget::readVisibleParameterName },
    { "ContextMenuVisible", &BaseWidget::readContextMenuVisible, &HostBaseWidget::readContextMenuVisible },
    { "FindKey", &BaseWidget::readFindKey, &HostBaseWidget::readFindKey },
    { "RemoteControlList", &BaseWidget::readRemoteControlList, &HostBaseWidget::readRemoteControlList },
    { "TabOrder", &BaseWidget::readTabOrder, &HostBaseWidget::readTabOrder },
    { "FrontFocus", &BaseWidget::readFrontFocus, &HostBaseWidget::readFrontFocus },
};

QDomElement element(QDomDocument &doc, const QString &xml)
{
    doc.setContent(xml);
    return doc.documentElement();
}

} // namespace

class tst_BinaryLayout : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
#ifndef ITANIUM_MEMBER_POINTERS
        QSKIP("Slot indices are read from Itanium-ABI member pointers");
#endif
    }

    void widgetCoreSlots_data()
    {
        QTest::addColumn<int>("slot");
        QTest::addColumn<int>("expected");
        // The destructor is slot 0; on this ABI it fills two entries.
        auto row = [](const char *name, int slot, int expected) {
            QTest::newRow(name) << slot << expected + 1;
        };
        row("configure", slotOf(&IWidgetCore::configure), 1);
        row("passToHost", slotOf(&IWidgetCore::passToHost), 2);
        row("setZoom", slotOf(&IWidgetCore::setZoom), 3);
        row("zoomFactor", slotOf(&IWidgetCore::zoomFactor), 4);
        row("setHighlight", slotOf(&IWidgetCore::setHighlight), 5);
        row("attributeMap", slotOf(&IWidgetCore::attributeMap), 6);
        row("attributeMapRef", slotOf(&IWidgetCore::attributeMapRef), 7);
        row("setWidgetName", slotOf(&IWidgetCore::setWidgetName), 8);
        row("widgetName", slotOf(&IWidgetCore::widgetName), 9);
        row("isParameterWidget", slotOf(&IWidgetCore::isParameterWidget), 10);
        row("addressCount", slotOf(&IWidgetCore::addressCount), 11);
        row("address", slotOf(&IWidgetCore::address), 12);
        row("applyValues", slotOf(&IWidgetCore::applyValues), 13);
        row("updateAddresses", slotOf(&IWidgetCore::updateAddresses), 14);
        row("validAddresses", slotOf(&IWidgetCore::validAddresses), 15);
        row("addressValues", slotOf(&IWidgetCore::addressValues), 16);
        row("addressList", slotOf(&IWidgetCore::addressList), 17);
        row("exchangeAddressData", slotOf(&IWidgetCore::exchangeAddressData), 18);
        row("sideList", slotOf(&IWidgetCore::sideList), 19);
        row("applyAddressValues", slotOf(&IWidgetCore::applyAddressValues), 20);
        row("notifyValueChanged", slotOf(&IWidgetCore::notifyValueChanged), 21);
        row("widgetMetaObject", slotOf(&IWidgetCore::widgetMetaObject), 22);
        row("refresh", slotOf(&IWidgetCore::refresh), 23);
        row("acceptOperation", slotOf(&IWidgetCore::acceptOperation), 24);
        row("acceptCommand", slotOf(&IWidgetCore::acceptCommand), 25);
        row("setActive", slotOf(&IWidgetCore::setActive), 26);
        row("hostCore", slotOf(&IWidgetCore::hostCore), 27);
    }
    void widgetCoreSlots()
    {
        QFETCH(int, slot);
        QTEST(slot, "expected");
    }

    void valueSlots_data()
    {
        QTest::addColumn<int>("slot");
        QTest::addColumn<int>("hostSlot");
        QTest::addColumn<int>("expected");
        QTest::newRow("set") << slotOf(&Value::set) << slotOf(&HostValue::set) << 0;
        QTest::newRow("text") << slotOf(&Value::text) << slotOf(&HostValue::text) << 1;
        QTest::newRow("keys") << slotOf(&Value::keys) << slotOf(&HostValue::keys) << 2;
        QTest::newRow("remove") << slotOf(&Value::remove) << slotOf(&HostValue::remove) << 3;
        QTest::newRow("assign") << slotOf(&Value::assign) << slotOf(&HostValue::assign) << 4;
        QTest::newRow("isEmpty") << slotOf(&Value::isEmpty) << slotOf(&HostValue::isEmpty) << 5;
    }
    void valueSlots()
    {
        QFETCH(int, slot);
        QFETCH(int, hostSlot);
        QTEST(slot, "expected");
        QTEST(hostSlot, "expected");
    }

    // A host calls set and text through its own declaration.
    void valueCalledAsHostsDo()
    {
        QCOMPARE(slotOf(&Value::set), slotOf(&HostValue::set));
        QCOMPARE(slotOf(&Value::text), slotOf(&HostValue::text));
        Value value;
        auto *host = reinterpret_cast<HostValue *>(&value);
        QVERIFY(host->set(QStringLiteral("ui_prm_str"), QStringLiteral("-3.0dB")));
        QVERIFY(!host->set(QStringLiteral("ui_prm_str"), QStringLiteral("-3.0dB")));
        QCOMPARE(host->text(QStringLiteral("ui_prm_str")), QStringLiteral("-3.0dB"));
        QVERIFY(!host->isEmpty());
    }

    void baseWidgetHandlerSlots_data()
    {
        QTest::addColumn<int>("slot");
        QTest::addColumn<int>("hostSlot");
        QTest::addColumn<int>("expected");
        const int first = slotOf(&AfterQWidget::first);
        int i = 0;
        for (const HandlerRow &row : handlerRows) {
            QTest::newRow(row.tag) << slotOf(row.library) << slotOf(row.host) << first + i;
            ++i;
        }
    }
    void baseWidgetHandlerSlots()
    {
        QFETCH(int, slot);
        QFETCH(int, hostSlot);
        QTEST(slot, "expected");
        QTEST(hostSlot, "expected");
    }

    // Handlers called through the host's table reach the right handler.
    void handlersCalledAsHostsDo()
    {
        for (const HandlerRow &row : handlerRows)
            QCOMPARE(slotOf(row.library), slotOf(row.host));

        RecordingHost host;
        ParameterManagementRegistry registry;
        BaseWidget widget(&host, &registry, nullptr);
        auto *asHost = reinterpret_cast<HostBaseWidget *>(static_cast<QWidget *>(&widget));
        QCOMPARE(static_cast<void *>(asHost), static_cast<void *>(&widget));

        QDomDocument doc;
        QVERIFY((asHost->*handlerRows[1].host)(element(doc, "<Focus>none</Focus>")));
        QCOMPARE(widget.focusPolicy(), Qt::NoFocus);
        QVERIFY((asHost->*handlerRows[10].host)(element(doc, "<VisibleParameterName>false</VisibleParameterName>")));
        QVERIFY(!widget.visibleParameterName());
        QVERIFY((asHost->*handlerRows[11].host)(element(doc, "<ContextMenuVisible>no</ContextMenuVisible>")));
        QVERIFY(!widget.contextMenuVisible());
        QVERIFY((asHost->*handlerRows[12].host)(element(doc, "<FindKey>Gain</FindKey>")));
        QCOMPARE(widget.findKey(), QStringLiteral("Gain"));
        QVERIFY((asHost->*handlerRows[14].host)(element(doc, "<TabOrder>7</TabOrder>")));
        QCOMPARE(widget.tabOrder(), 7);
        QVERIFY((asHost->*handlerRows[9].host)(element(doc, "<ReplaceParameterName>Level</ReplaceParameterName>")));
        QCOMPARE(widget.replaceParameterName(), QStringLiteral("Level"));
        QVERIFY((asHost->*handlerRows[7].host)(element(doc, "<DragEnabled>true</DragEnabled>")));
        QVERIFY(widget.dragEnabled());
    }
};

QTEST_MAIN(tst_BinaryLayout)
#include "tst_binarylayout.moc"
