// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QPair>
#include <QString>

class QJsonObject;

/// What every plug-in offers the host. The order of the virtual operations is the binary contract: later versions of
/// the interface only add operations at the end.
class IPlugin {
public:
    virtual ~IPlugin() = default;

    virtual QString name() const = 0;
    /// Major and minor version.
    virtual QPair<int, int> version() const = 0;
    /// In the language of the host's user interface, English if there is no such text. May hold HTML.
    virtual QString description() const = 0;
    /// Hands over the "MetaData" object embedded in the library. False: the plug-in must not be used.
    virtual bool setMetaData(const QJsonObject &metaData) = 0;
    virtual void reserved5() = 0;
};

Q_DECLARE_INTERFACE(IPlugin, "org.toran.IPlugin/1.0")
