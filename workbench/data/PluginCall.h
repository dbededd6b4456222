// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaMethod>
#include <QObject>

#include <type_traits>

namespace Workbench {

/// Calls an invokable method of a plug-in object by its normalised signature, e.g. "tableModel_rowCount()". An object
/// that is gone, lacks the method or declares another result type gives the default value, silently: plug-ins may offer
/// less than the host knows.
template <typename Result = void, typename... Arguments>
Result callPlugin(QObject *object, const char *signature, const Arguments &...arguments)
{
    const int index = object ? object->metaObject()->indexOfMethod(signature) : -1;
    if constexpr (std::is_void_v<Result>) {
        if (index >= 0) {
            object->metaObject()->method(index).invoke(
                object, Qt::DirectConnection,
                QArgument<Arguments>(QMetaType::fromType<Arguments>().name(), arguments)...);
        }
    } else {
        Result result{};
        if (index >= 0) {
            object->metaObject()->method(index).invoke(
                object, Qt::DirectConnection, QReturnArgument<Result>(QMetaType::fromType<Result>().name(), result),
                QArgument<Arguments>(QMetaType::fromType<Arguments>().name(), arguments)...);
        }
        return result;
    }
}

} // namespace Workbench
