// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/StartHints.h"

#include "data/PrintableText.h"
#include "data/Error.h"
#include "window/RecentFiles.h"

#include <QCommandLinkButton>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QStandardPaths>
#include <QVBoxLayout>

/// Of a static library: the linker keeps only what is asked for.
static void initGuideResources()
{
    Q_INIT_RESOURCE(guide);
}

namespace Workbench {

namespace {

constexpr int mostRecent = 4;
constexpr int hintsWidth = 460;

QCommandLinkButton *addButton(QLayout *layout, const QString &text, const QString &description)
{
    auto *button = new QCommandLinkButton(QString(text).replace(u'&', QLatin1String("&&")), description);
    layout->addWidget(button);
    return button;
}

} // namespace

StartHints::StartHints(QWidget *parent) : QWidget(parent), m_recent(new QVBoxLayout)
{
    initGuideResources();
    setObjectName(QStringLiteral("startHints"));
    setFixedWidth(hintsWidth);
    auto *layout = new QVBoxLayout(this);
    auto *title = new QLabel(tr("<h2>Nothing is open</h2><p>Drop MAGRES files, measured spectra or their folders here, "
                                "or begin with one of these:</p>"));
    title->setWordWrap(true);
    layout->addWidget(title);
    QCommandLinkButton *open = addButton(layout, tr("Open..."), tr("calculations (*.magres), measurements, documents"));
    open->setObjectName(QStringLiteral("openHint"));
    connect(open, &QAbstractButton::clicked, this, &StartHints::openRequested);
    layout->addLayout(m_recent);
    for (const auto &[name, what] : samples()) {
        QCommandLinkButton *button = addButton(layout, tr("Sample: %1").arg(name), what);
        connect(button, &QAbstractButton::clicked, this, [this, sample = name] { Q_EMIT sampleChosen(sample); });
    }
    refresh();
}

void StartHints::refresh()
{
    while (QLayoutItem *item = m_recent->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const QString &file : RecentFiles::files().mid(0, mostRecent)) {
        const QFileInfo info(file);
        QCommandLinkButton *button = addButton(m_recent, tr("Recent: %1").arg(printable(info.fileName())),
                                               printable(QDir::toNativeSeparators(info.path())));
        connect(button, &QAbstractButton::clicked, this, [this, file] { Q_EMIT chosen(file); });
    }
    adjustSize();
}

void StartHints::initResources()
{
    initGuideResources();
}

QList<std::pair<QString, QString>> StartHints::samples()
{
    return {{QStringLiteral("paracetamol.magres"), tr("a molecular crystal: shieldings and field gradients")},
            {QStringLiteral("paracetamol-13C-points.csv"), tr("a measured ¹³C spectrum to go with it")}};
}

QString StartHints::sampleFile(const QString &name)
{
    initGuideResources();
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)
                      + QStringLiteral("/samples"));
    const QString path = folder.filePath(name);
    if (QFileInfo::exists(path))
        return path;
    if (!folder.mkpath(QStringLiteral(".")) || !QFile::copy(QStringLiteral(":/samples/") + name, path))
        fail(path, tr("the sample cannot be written there"));
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return path;
}

} // namespace Workbench

#include "moc_StartHints.cpp"
