// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/HostContract.h"

#include <QObject>
#include <QVariant>

#include <tuple>
#include <utility>

/// Base of the host proxies: one plain pointer to a host object, not owned and not tested for null, whose methods are
/// called by name. A call that cannot be made is silent and yields the default value of its result, which callers take
/// to mean that the host has no such object or value.
template <typename Object>
class WrObject {
public:
    explicit WrObject(Object *object = nullptr) : m_object(object) { }
    virtual ~WrObject() = default;
    WrObject(const WrObject &) = default;
    WrObject &operator=(const WrObject &) = default;

    Object *object() const { return m_object; }

    /// Invalid when there is no object or no such property.
    QVariant property(const char *name) const { return m_object ? m_object->property(name) : QVariant(); }

protected:
    template <typename Result, typename... Arguments>
    Result call(const HostMethod &method, const Arguments &...arguments) const
    {
        Result result{};
        invoke(method, std::tuple(Slot::returnArgument(method.result, result)), arguments...);
        return result;
    }

    /// For methods without a result.
    template <typename... Arguments>
    void send(const HostMethod &method, const Arguments &...arguments) const
    {
        invoke(method, std::tuple(), arguments...);
    }

private:
    /// What invokeMethod() takes per value: pointer and type name, and since Qt 6.5 the metatype descriptor.
    struct Slot {
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
        template <typename T>
        static auto returnArgument(const char *typeName, T &value)
        {
            return QtPrivate::Invoke::returnArgument(typeName, value);
        }
        template <typename T>
        static auto argument(const char *typeName, const T &value)
        {
            return QtPrivate::Invoke::argument(typeName, value);
        }
#else
        template <typename T>
        static QGenericReturnArgument returnArgument(const char *typeName, T &value)
        {
            return {typeName, &value};
        }
        template <typename T>
        static QGenericArgument argument(const char *typeName, const T &value)
        {
            return {typeName, &value};
        }
#endif
    };

    template <typename ReturnSlot, typename... Arguments>
    void invoke(const HostMethod &method, const ReturnSlot &result, const Arguments &...arguments) const
    {
        Q_ASSERT(method.argumentCount() == sizeof...(Arguments));
        [&]<std::size_t... I>(std::index_sequence<I...>)
        {
            std::apply(
                [&](const auto &...slot) {
                    QMetaObject::invokeMethod(m_object, method.name, Qt::AutoConnection, slot...);
                },
                std::tuple_cat(result, std::tuple(Slot::argument(method.arguments[I], arguments)...)));
        }
        (std::index_sequence_for<Arguments...>());
    }

    Object *m_object;
};
