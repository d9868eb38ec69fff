// The byte cap of the capped text field.
#include "ByteCapValidator.h"

#include <QQmlEngine>
#include <algorithm>

namespace velmar::ui {

ByteCapValidator::ByteCapValidator(QObject* parent) : QValidator(parent) {}

qsizetype ByteCapValidator::utf8Length(const QString& text) {
    // The same conversion the text meets on its way to the core.
    return text.toUtf8().size();
}

bool ByteCapValidator::allows(qsizetype bytes, qsizetype maxBytes, qsizetype heldBytes) {
    return bytes <= std::max(maxBytes, heldBytes);
}

QValidator::State ByteCapValidator::validate(QString& input, int&) const {
    return allows(utf8Length(input), maxBytes_, heldBytes_) ? Acceptable : Invalid;
}

void ByteCapValidator::setMaxBytes(int maxBytes) {
    if (maxBytes == maxBytes_) return;
    maxBytes_ = maxBytes;
    emit maxBytesChanged();
    emit changed();
}

void ByteCapValidator::setHeld(const QString& held) {
    if (held == held_) return;
    held_ = held;
    heldBytes_ = utf8Length(held);
    emit heldChanged();
    // The field re-checks its text, so the text it holds counts as valid
    // again and the next invalid edit is undone.
    emit changed();
}

}  // namespace velmar::ui
