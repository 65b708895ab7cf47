#ifndef CORVANE_CONTROLS_TEXT_HEXTEXTBOX_H
#define CORVANE_CONTROLS_TEXT_HEXTEXTBOX_H

#include "controls/text/ValueTexts.h"

#include <QPlainTextEdit>

class HexTextBox;

/*!
    \class HexEdit
    \brief The editor of a HexTextBox: types over three-character cells.

    Each byte is a cell of two lower-case digits and a blank. A digit typed
    over a cell replaces the digit under the cursor and the cursor skips the
    blanks; a digit typed at the end starts a new cell, completed with "0 ",
    so that the next digit lands on that 0. Anything but digits is refused,
    as is everything while the box is read-only and, with a "MaxLength",
    a new cell past the limit. Backspace and Delete take whole cells.
*/
class HexEdit : public QPlainTextEdit
{
    Q_OBJECT
public:
    HexEdit(HexTextBox *owner, QWidget *parent);
    //! Forgets the owner, which is going away: nothing is committed from now on.
    void release() { m_owner = nullptr; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;

private:
    bool typeDigit(QChar digit);
    void removeCell(int cell);
    bool mayAppendCells(int count) const;

    HexTextBox *m_owner;
};

/*!
    \class HexTextBox
    \brief Shows and edits a byte string as hexadecimal pairs.

    The parameter's display text holds the bytes in hexadecimal (blanks and
    other separators are ignored); the box shows them as "%02x" pairs, each
    followed by a blank. "MaxLength" limits the byte count (0: no limit).
    The loss of the focus or Return sends the pairs, separated by single
    blanks, as a set-by-text request.
*/
class HexTextBox : public ParameterText
{
    Q_OBJECT
    Q_PROPERTY(int maxLength READ maxLength WRITE setMaxLength)
    Q_PROPERTY(QString hexText READ hexText)
    Q_PROPERTY(QByteArray bytes READ bytes)

public:
    HexTextBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~HexTextBox() override;

    static const TagTable &tags();
    const TagTable &tagTable() const override { return tags(); }

    int maxLength() const { return m_maxLength; }
    void setMaxLength(int bytes);
    HexEdit *edit() const { return m_edit; }
    QString hexText() const;
    QByteArray bytes() const { return m_bytes; }

    static QString toHex(const QByteArray &bytes);
    static QByteArray fromHex(const QString &text);

    void commit();

public slots:
    void slotTextChanged();

signals:
    void bytesChanged(const QByteArray &bytes);

protected:
    void ownValueChanged(int index) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void showParameter();

    HexEdit *m_edit;
    QByteArray m_bytes;
    int m_maxLength = 0;
};

#endif
