// The byte cap of a text field, as a validator: an edit whose result is
// longer in UTF-8 than `maxBytes` is invalid, so the field undoes it whole,
// typed, pasted or committed by an input method alike. A text that was
// already longer when it was put in (a stored value) stays whole, and edits
// may shorten it but never lengthen it. Tabs and line breaks never enter:
// the stored files use them to separate fields and lines.
#pragma once

#include <QString>
#include <QValidator>
#include <QtQml/qqml.h>

namespace velmar::ui {

// Qt Quick registers its validators but not their base, so the tools that
// check the QML would not know what a ByteCapValidator is without this.
struct ValidatorBase {
    Q_GADGET
    QML_FOREIGN(QValidator)
    QML_ANONYMOUS
};

class ByteCapValidator : public QValidator {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int maxBytes READ maxBytes WRITE setMaxBytes NOTIFY maxBytesChanged)
    /// The text the field holds now; bind it to the field's text.
    Q_PROPERTY(QString held READ held WRITE setHeld NOTIFY heldChanged)
public:
    explicit ByteCapValidator(QObject* parent = nullptr);

    /// Drops tabs and line breaks (moving `pos` with the text), then judges
    /// the length.
    State validate(QString& input, int& pos) const override;

    /// A tab, or anything that ends a line.
    static bool breaksLine(QChar c);

    /// Whether a text of `bytes` may stand in a field capped at `maxBytes`
    /// that holds `heldBytes` now.
    static bool allows(qsizetype bytes, qsizetype maxBytes, qsizetype heldBytes);
    /// The UTF-8 length of `text`.
    static qsizetype utf8Length(const QString& text);

    int maxBytes() const { return maxBytes_; }
    void setMaxBytes(int maxBytes);
    QString held() const { return held_; }
    void setHeld(const QString& held);

signals:
    void maxBytesChanged();
    void heldChanged();

private:
    int maxBytes_ = 0;
    QString held_;
    qsizetype heldBytes_ = 0;
};

}  // namespace velmar::ui
