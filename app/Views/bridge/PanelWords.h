// The fixed words of the screens, for QML: one constant property per entry
// of the table in Words.h, read as `panel.words.refresh`, so qmllint checks
// every name a screen reads.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "Words.h"

namespace velmar::ui {

/// A word (or any UTF-8 text of the core) as Qt holds it.
inline QString qtText(std::string_view text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

#define VELMAR_WORD_PROPERTY(name, text)                                               \
    Q_PROPERTY(QString name READ name CONSTANT)                                        \
public:                                                                                \
    QString name() const { return qtText(Words::name); }                          \
                                                                                       \
private:

class PanelWords : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The panel holds the words.")
    VELMAR_WORDS(VELMAR_WORD_PROPERTY)
    /// "Placeholders: {number} {branch} ...", under the pattern editor's field.
    Q_PROPERTY(QString placeholdersLine READ placeholdersLine CONSTANT)
public:
    using QObject::QObject;
    QString placeholdersLine() const { return QString::fromStdString(Words::placeholdersLine()); }
};

#undef VELMAR_WORD_PROPERTY

}  // namespace velmar::ui
