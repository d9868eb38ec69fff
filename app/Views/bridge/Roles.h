// The roles of the screens' lists, each list's in one table: the enum that
// C++ fills a row by and the names QML reads, from one list of names, so the
// two cannot drift apart. A row is one value per role, null where it sets none.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>

#include <array>
#include <cstddef>
#include <initializer_list>
#include <utility>

#include "DiffListModel.h"

#define VELMAR_ROLE_ENUM(name) name,
#define VELMAR_ROLE_NAME(name) #name,

/// Declares `enum class Enum` with one value per name and its table `Table`.
#define VELMAR_ROLE_TABLE(Enum, Table, ROLES)                                     \
    enum class Enum { ROLES(VELMAR_ROLE_ENUM) };                                  \
    struct Table {                                                                \
        using Role = Enum;                                                        \
        static constexpr const char* names[] = {ROLES(VELMAR_ROLE_NAME)};         \
    };

namespace velmar::ui {

/// The role names of `Table`, in the order of its enum: the first is
/// Qt::UserRole + 1, as DiffListModel numbers them.
template <class Table>
QList<QByteArray> roleNames() {
    QList<QByteArray> out;
    for (const char* name : Table::names) out.append(QByteArray(name));
    return out;
}

/// A row keyed by `key`, with the values given by role; the rest stay null,
/// so rows of different kinds can share one list.
template <class Table>
DiffListModel::Row makeRow(QString key, std::initializer_list<std::pair<typename Table::Role, QVariant>> values) {
    constexpr std::size_t count = std::size(Table::names);
    DiffListModel::Row row{std::move(key), {}};
    row.values.resize(qsizetype(count));
    for (const auto& [role, value] : values) row.values[qsizetype(role)] = value;
    return row;
}

}  // namespace velmar::ui
