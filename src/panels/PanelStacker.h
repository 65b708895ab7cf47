#ifndef CORVANE_PANELS_PANELSTACKER_H
#define CORVANE_PANELS_PANELSTACKER_H

#include "core/BaseWidget.h"
#include "panels/PageBuilder.h"

#include <QMap>
#include <QPointer>
#include <QSet>

class IPanelFactory;
class QStackedLayout;

/*!
    \class PanelStacker
    \brief Shows one of several whole pages in its rectangle, chosen by the
    value of its first parameter.

    "StackList" lists the pages, one <Page key="..."> element each: the
    page names a panel file ("file") or holds its <Widget> elements (or a
    <Panel>) inline; a <Page> without "key" serves every key that has none
    of its own. The list's attributes:

    \list
    \li "range": the page key is the step of the position on a scale of that
        many steps; "auto" takes the steps from the host's editor
        information ("editor_auto"), else one step per listed page.
    \li "divide": the page key is the position text read as an integer,
        divided by it.
    \li "value" "text": the page key is the display text rather than the
        position text.
    \li "default": the page shown until the first value arrives.
    \li "preload" "true": every listed page is built at configuration, so
        the first switch to it costs nothing.
    \li "hint": the text shown where a key has no page.
    \li "file": a panel name for keys not listed, with "%1" standing for the
        key.
    \endlist

    The host's "editor_hint" (integers) names pages the editor will show:
    they are built at configuration, and the first of them is shown before
    the first value when there is no "default".

    Pages are built once, through the host's panel factory, and kept; their
    controls inherit the keys of the stacker's first address (device, zone)
    where their own addresses leave them out.
*/
class PanelStacker : public BaseWidget
{
    Q_OBJECT
    // The meaning of each address index, for hosts and panelview --describe.
    Q_CLASSINFO("Addresses", "0: the parameter whose value chooses the page")
    Q_PROPERTY(QString currentKey READ currentKey NOTIFY currentKeyChanged)
    Q_PROPERTY(int pageCount READ pageCount)
    Q_PROPERTY(QString pageKeys READ pageKeys)
    Q_PROPERTY(int stepCount READ stepCount)
    Q_PROPERTY(int divisor READ divisor)
    Q_PROPERTY(bool byText READ byText)
    Q_PROPERTY(bool preload READ preload)
    Q_PROPERTY(QString defaultKey READ defaultKey)
    Q_PROPERTY(QString hint READ hint)
    Q_PROPERTY(bool pageShown READ isPageShown)
    CORVANE_TAG_TABLE

public:
    PanelStacker(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~PanelStacker() override;

    bool configure(const QDomNode &element) override;

    QString currentKey() const { return m_currentKey; }
    //! The pages built so far; the page for unlisted keys counts once.
    int pageCount() const { return m_pages.size() + (m_fallback ? 1 : 0); }
    //! The keys of the pages built for their own key so far, joined by ",".
    QString pageKeys() const { return QStringList(m_pages.keys()).join(QLatin1Char(',')); }
    int stepCount() const { return m_stepCount; }
    int divisor() const { return m_divisor; }
    bool byText() const { return m_byText; }
    bool preload() const { return m_preload; }
    QString defaultKey() const { return m_defaultKey; }
    QString hint() const { return m_hint; }
    //! Whether a page (rather than the empty area) is on show.
    bool isPageShown() const;

    QWidget *page(const QString &key) const;
    QWidget *currentPage() const;
    //! The keys of the listed pages.
    QStringList listedKeys() const { return m_pageElements.keys(); }

    //! The page key the first address's value selects; a null string while it has none.
    QString keyForValue() const;
    //! Shows the page of \a key, building it first if needed; false when there is no such page.
    bool showPage(const QString &key);

    //! Uses \a factory instead of the host's panel plug-in (hosts that build pages themselves).
    void setPanelFactory(IPanelFactory *factory) { m_factory = factory; }
    IPanelFactory *panelFactory() const;

signals:
    void currentKeyChanged(const QString &key);
    void pageCreated(const QString &key, QWidget *page);

protected:
    virtual bool readStackList(const QDomElement &e);

    //! Builds the page of \a key as a child of the stacker; null when there is none.
    virtual QWidget *createPage(const QString &key);
    void ownValueChanged(int index) override;
    void addressRebound(int index) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *ensurePage(const QString &key);
    QWidget *ensureFallbackPage();
    void updatePage();
    void dropPages();

    QMap<QString, QPointer<QWidget>> m_pages;
    QPointer<QWidget> m_fallback;      // built once, shared by every unlisted key
    QString m_currentKey;
    qint16 m_stepCount = 0;
    qint16 m_divisor = 0;
    bool m_byText = false;

    QStackedLayout *m_layout;
    QWidget *m_empty;                  // shown while no page is
    bool m_preload = false;
    bool m_configuring = false;
    bool m_shown = false;
    //! A value has arrived for the first address; from then on an empty text is a key too.
    bool m_valueArrived = false;
    QString m_defaultKey;
    QString m_hint;
    QString m_filePattern;
    QList<int> m_editorHint;
    Panels::ElementStore m_store;
    QMap<QString, QDomElement> m_pageElements;
    QDomElement m_fallbackPage;
    QSet<QString> m_failed;            // keys without a page, not tried again
    QVariantMap m_builtContext;
    IPanelFactory *m_factory = nullptr;
};

#endif
