// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/HostContract.h"

#include <QObject>
#include <QVariant>

#include <memory>
#include <tuple>

/// Base of the host proxies: one plain pointer to a host object, not owned and not tested for null, whose methods are
/// called by name. A call that cannot be made is silent and yields the default value of its result, which callers take
/// to mean that the host has no such object or value.
template <typename Object>
class WrObject
{
public:
    explicit WrObject(Object *object = nullptr)
        : m_object(object)
    {
    }
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
        invoke(method, returnSlot(method.result, &result), arguments...);
        return result;
    }

    template <typename... Arguments>
    void send(const HostMethod &method, const Arguments &...arguments) const
    {
        invoke(method, emptyReturnSlot(), arguments...);
    }

private:
    // Qt 6.5 took metatype descriptors into the calling mechanism; before, pointers and type names were all of it.
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    using ReturnSlot = QMetaMethodReturnArgument;
    using ArgumentSlot = QMetaMethodArgument;
    template <typename T>
    static ReturnSlot returnSlot(const char *typeName, T *value)
    {
        return {QtPrivate::qMetaTypeInterfaceForType<T>(), typeName, value};
    }
    static ReturnSlot emptyReturnSlot() { return {}; }
    template <typename T>
    static ArgumentSlot argumentSlot(const char *typeName, const T &value)
    {
        return {QtPrivate::qMetaTypeInterfaceForType<T>(), typeName, std::addressof(value)};
    }
#else
    using ReturnSlot = QGenericReturnArgument;
    using ArgumentSlot = QGenericArgument;
    template <typename T>
    static ReturnSlot returnSlot(const char *typeName, T *value)
    {
        return {typeName, value};
    }
    static ReturnSlot emptyReturnSlot() { return {}; }
    template <typename T>
    static ArgumentSlot argumentSlot(const char *typeName, const T &value)
    {
        return {typeName, std::addressof(value)};
    }
#endif

    template <typename... Arguments>
    void invoke(const HostMethod &method, ReturnSlot result, const Arguments &...arguments) const
    {
        Q_ASSERT(method.argumentCount() == sizeof...(Arguments));
        [[maybe_unused]] std::size_t i = 0;
        const std::array<ArgumentSlot, sizeof...(Arguments)> slots_{argumentSlot(method.arguments[i++], arguments)...};
        std::apply(
            [&](const auto &...slot) {
                QMetaObject::invokeMethod(m_object, method.name, Qt::AutoConnection, result, slot...);
            },
            slots_);
    }

    Object *m_object;
};
