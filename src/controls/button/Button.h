#ifndef CORVANE_CONTROLS_BUTTON_BUTTON_H
#define CORVANE_CONTROLS_BUTTON_BUTTON_H

#include "core/BaseWidget.h"
#include "controls/common/ImageSource.h"

#include <QColor>
#include <QHash>
#include <QPointer>
#include <QStringList>

class QFileDialog;

/*!
    \class Button
    \brief The on/off switch of one parameter, and the pressing rules every
    member of the button family shares.

    A plain left press (no modifier) presses the button; releasing it inside
    runs clickAction(), releasing it outside cancels. Space, Return and Enter
    do the same from the keyboard. Control and Control+Shift presses go to the
    common selection and link handling. Nothing is pressed while the button
    is read only or not operable.

    The on/off state is never kept: it is read from the parameter whenever
    the button paints or clicks. The base click toggles: position 1 when the
    parameter is off, 0 when it is on, released ("set_prm_type" "0").

    Painting: the off or on image ("OffImage", "OnImage"; SVG or any image
    format Qt reads, found as ImageSource finds names: in the host's image
    folder, else among the built-in images), else a rounded
    face, lit when on and darker while pressed. "Icon" and "Text" ("OnText"
    while lit) are drawn on top in "TextColor". "Reverse" swaps what on and
    off show. A face without text, image or icon shows the parameter's
    display text.
*/
class Button : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(bool pressed READ isPressed)
    Q_PROPERTY(bool on READ isOn)
    Q_PROPERTY(int displayState READ displayState)
    Q_PROPERTY(bool operable READ isOperable WRITE setOperable)
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool reverse READ isReverse WRITE setReverse)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QString onText READ onText WRITE setOnText)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QString offImage READ offImage WRITE setOffImage)
    Q_PROPERTY(QString onImage READ onImage WRITE setOnImage)
    Q_PROPERTY(QString icon READ icon WRITE setIcon)
    Q_PROPERTY(QString shownText READ shownText)
    CORVANE_TAG_TABLE

public:
    Button(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~Button() override;

    static const QColor defaultTextColor;
    static const QColor faceColor;
    static const QColor litColor;
    static const QColor frameColor;

    //! 0 off, 1 off and pressed, 2 on, 3 on and pressed.
    int displayState() const { return (isOn() ? 2 : 0) | (m_pressed ? 1 : 0); }
    //! Whether the button shows its on state; the parameter at index 0 is on.
    virtual bool isOn() const;
    //! What a completed press does; the base toggles the parameter at index 0.
    virtual void clickAction();

    bool isPressed() const { return m_pressed; }
    //! False while the control is disabled, or after setOperable(false).
    bool isOperable() const { return m_operable && isEnabled(); }
    void setOperable(bool operable);
    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);
    bool isReverse() const { return m_reverse; }
    void setReverse(bool reverse);
    QString text() const { return m_text; }
    void setText(const QString &text);
    QString onText() const { return m_onText; }
    void setOnText(const QString &text);
    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    QString offImage() const { return m_offImage; }
    void setOffImage(const QString &name);
    QString onImage() const { return m_onImage; }
    void setOnImage(const QString &name);
    QString icon() const { return m_icon; }
    void setIcon(const QString &name);
    QStringList extraImages() const { return m_extraImages; }
    void setExtraImages(const QStringList &names);

    //! The text drawn for the current state.
    QString shownText() const;
    //! The text drawn lit or unlit: "OnText" when lit and given, else "Text", else fallbackText().
    QString textFor(bool lit) const;

    /*!
        \a name at \a size and the screen's pixel ratio, through the shared
        image pipeline (which caches every rendering); null when it cannot be
        read.
    */
    QPixmap image(const QString &name, const QSize &size, ImageSource::Options options = ImageSource::Stretch);
    //! Where \a name is read from: the file it resolves to, else where it would be looked for.
    QString imagePath(const QString &name) const;
    //! How many image names the button has drawn since they were last changed.
    int cachedImageCount() const { return m_imageCache.size(); }


    enum class FileDialog { Open, Save };

protected:
    /*!
        Asks for a file without waiting for a user: true with \a path set
        (empty when cancelled) when the answer is known at once, as a host
        playing a script gives it (IHostCore::answerFileName()); false when a
        dialog must ask.
    */
    virtual bool askFileName(FileDialog kind, const QString &caption, const QString &filter, QString *path);
    /*!
        Asks for a file and sends its path as text on index 0. A saved name
        without \a extension gets it appended; nothing is sent on cancel.
        Without an answer at once a file dialog opens that is not modal: the
        path is sent when it is chosen.
    */
    void sendChosenFile(FileDialog kind, const QString &caption, const QString &filter, const QString &extension);

    //! Shown when the button has no text, image or icon of its own: the parameter's display text.
    virtual QString fallbackText() const;

    bool canOperate() const { return isOperable() && !m_readOnly; }
    void setPressed(bool pressed);
    //! The state painted: displayState(), without the pressed look while the pointer is outside.
    virtual int paintedState() const;
    //! Whether the face is flat: no face while off and released.
    virtual bool isFlat() const { return false; }

    //! Paints the face, image, icon and text for \a state.
    virtual void paintButton(QPainter &painter, int state);
    //! Drawn over the face, under the icon and text.
    virtual void paintDecoration(QPainter &painter, int state) { Q_UNUSED(painter) Q_UNUSED(state) }
    void paintFace(QPainter &painter, bool lit, bool down);

    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    static bool isActivationKey(int key)
    {
        return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    }

private:
    QString imageBasePath() const;
    void sendFile(FileDialog kind, QString path, const QString &extension);
    void setImageName(QString &member, const QString &name);

    QString m_offImage;
    QString m_onImage;
    QString m_icon;
    QString m_text;
    QString m_onText;
    QColor m_textColor = defaultTextColor;
    QHash<QString, ImageSource> m_imageCache;
    QStringList m_extraImages;
    bool m_pressed = false;
    bool m_reverse = false;
    bool m_operable = true;
    bool m_readOnly = false;

    QPointer<QFileDialog> m_fileDialog;
    bool m_pressInside = true;
};

#endif
