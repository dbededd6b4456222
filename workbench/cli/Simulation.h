// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/SimulateOptions.h"
#include "data/TableContent.h"
#include "data/structure/CrystalStructure.h"

#include <QPointer>
#include <QUuid>
#include <QVariantHash>

namespace Workbench {

class Experiment;
class HostApplication;
class MessageLog;
class NmrData;
class NmrItem;
class TableItem;

/// One file taken through the plug-in: read, simulated, compared with an experiment. Everything goes by the contract:
/// settings, methods called by name, parameters stored with the spectrum. Failures are CommandError.
class Simulation {
public:
    Simulation(HostApplication &host, MessageLog &log);

    void readFile(const QString &fileName, const QMap<QString, QString> &isotopes);
    TableItem &table() const;

    /// The plug-in's table with a row for every atom, in the order of the file: its own has one for every label, with
    /// the values of the first atom.
    TableContent tableByAtom() const;

    /// The atoms and tensors of the file, as they are in the document.
    QVariantMap structureData() const;
    CrystalStructure structure() const;
    /// The NMR nuclei of the file's elements, in the order of its atoms.
    QStringList nuclei() const;

    /// Makes the spectrum. A 2D dimension for which the user gives no line width gets at least two points of its axis:
    /// narrower peaks would fall between the points.
    void run(const SimulateOptions &options);
    /// As run(), but for the peaks alone: the spectrum has few points, and no line widths or ranges of the user.
    void runForPeaks(const SimulateOptions &options);

    NmrItem &item() const;
    NmrData &data() const;
    const QUuid &entry() const { return m_entry; }
    /// The parameters that the plug-in stored with the spectrum.
    QVariantHash parameters() const;
    QVariantList peaks() const;
    /// "30 Hz (13C)", per dimension.
    QString lineWidths() const;
    /// Who is in the peaks of averaged groups without being in one: groups are found in peak lists by label. Empty for
    /// nobody.
    QString averagingNote() const;

    /// A peak list, or a spectrum of which the peaks are picked.
    void addExperiment(const QString &fileName);
    /// Its entry.
    QUuid addExperiment(const Experiment &experiment);
    /// The plug-in's report. The spectrum is then made anew with the fitted reference: ranges that the user has not
    /// given follow it.
    QString autoReference();
    /// Auto reference as the plug-in leaves the spectrum.
    QString fitReference() { return report("autoRef()"); }
    QString rmsd() { return report("calcRmsd()"); }

private:
    QUuid dataId() const;
    void checkSites(const SimulateOptions &options);
    /// The plug-in knows fewer nuclei than there are. Whether it knows one only trying tells.
    bool canSimulate(const SimulateOptions &options, const QString &nucleus);
    void checkNuclei(const SimulateOptions &options, const QVariantHash &made) const;
    void callSlot(QObject *object, const char *slot);
    QString report(const char *slot);
    void createSpectrum(const SimulateOptions &options);
    /// Makes the spectrum from the parameters, with the points of the options and the line widths that they need.
    void generate(QVariantHash parameters);
    void update(const QVariantHash &parameters);
    QVariantMap missingLineWidths(const QVariantHash &parameters) const;

    HostApplication &m_host;
    MessageLog &m_log;
    QString m_fileName;
    QPointer<QObject> m_plugin;
    QPointer<TableItem> m_table;
    QPointer<NmrItem> m_item;
    QUuid m_entry;
    SimulateOptions m_options;
};

} // namespace Workbench
