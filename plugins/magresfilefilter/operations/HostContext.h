// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"
#include "parameters/Texts.h"
#include "reading/MagresData.h"
#include "support/TPlugin.h"
#include "support/WrDataEngine.h"
#include "support/WrNMRData.h"
#include "support/WrNMRDataTables.h"

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(magresLog)

namespace Magres {

/// The host's tables, found through the application.
class HostNuclearProperties : public NuclearProperties {
public:
    QString spin(const QByteArray &nucleus) const override;
    double quadrupoleMoment(const QByteArray &nucleus) const override;
    double naturalAbundance(const QByteArray &nucleus) const override;
};

/// What every operation needs of the host.
class HostContext {
public:
    explicit HostContext(const TPlugin &plugin) : m_plugin(plugin) { }

    bool isHeadless() const { return m_plugin.isHeadless(); }
    const WrMainScene &scene() const { return m_plugin.mainScene(); }
    const WrMainWindow &mainWindow() const { return m_plugin.mainWindow(); }
    /// Parent of dialogs.
    QWidget *window() const { return m_plugin.mainWindow().object(); }
    const NuclearProperties &nuclearProperties() const { return m_properties; }

    /// The map form of a data set in the document; empty if it is gone.
    QVariantMap dataMap(const QUuid &dataId) const;
    /// dataMap(), or a TPluginError that says that there is none.
    QVariantMap requiredDataMap(const QUuid &dataId) const;
    /// The data set read back from its map form, under the identity that it was asked for by; without atoms if it is
    /// gone.
    MagresData data(const QUuid &dataId) const;
    /// data(), or a TPluginError that says that there is none.
    MagresData requiredData(const QUuid &dataId) const;

    /// The spectra of the current NMR item.
    WrNMRData currentSpectra() const { return WrNMRData(m_plugin.mainWindow().getNMRData()); }
    /// The spectra of the NMR item whose context menu was opened; of the current one if that is not known.
    WrNMRData activeSpectra() const;

    /// A result or a failure, in a message box. A headless host gets it on the logging category "magres".
    void showInformation(const QString &title, const QString &text) const;
    void showFailure(const QString &title, const QString &text) const;

private:
    const TPlugin &m_plugin;
    HostNuclearProperties m_properties;
};

/// Runs an operation; its failure is shown under the title, with the message in place of the %1 of the text.
template <typename Operation>
void runReportingFailure(const HostContext &host, const QString &title, const QString &text, Operation operation)
{
    try {
        operation();
    } catch (const std::exception &error) {
        host.showFailure(title, text.arg(QString::fromUtf8(error.what())));
    } catch (...) { // a host's own; the event loop, where a menu would let it go, does not stand it
        host.showFailure(title, text.arg(Texts::tr("Unknown error")));
    }
}

} // namespace Magres
