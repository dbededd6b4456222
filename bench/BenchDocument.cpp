// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"
#include "Crystals.h"

#include "formats/DocumentFile.h"
#include "data/Spectrum.h"
#include "support/MetaTypes.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

using namespace Workbench;

namespace Bench {
namespace {

constexpr int spectra = 50;
constexpr int points = 1 << 16;

QVariantMap spectrumMap(Crystals::Random &random)
{
    QList<DoubleVector> data;
    for (int part = 0; part < 2; ++part) {
        DoubleVector &values = data.emplaceBack(points);
        for (double &value : values)
            value = random.uniform(-1, 1);
    }
    const auto perDimension = [](double value) { return QVariant::fromValue(DoubleVector(8, value)); };
    QList<int> lengths(8, 1);
    lengths[0] = points;
    return {{QStringLiteral("Length"), QVariant::fromValue(lengths)},
            {QStringLiteral("DataPoints"), QVariant::fromValue(data)},
            {QStringLiteral("SpecInfo"),
             QVariantMap{{QStringLiteral("SpectrometerFrequencies"), perDimension(150)},
                         {QStringLiteral("SW"), perDimension(30000)},
                         {QStringLiteral("SpectrumRef"), perDimension(0)}}}};
}

/// Lies on the disk as long as the program runs.
struct SavedDocument {
    SavedDocument()
    {
        Crystals::Random random(50);
        Document::Spectra stack;
        for (int i = 0; i < spectra; ++i)
            stack.entries.append({QUuid::createUuid(), QString::number(i), spectrumMap(random)});
        stack.activeEntry = stack.entries.first().id;
        document.items.append({QUuid::createUuid(), QStringLiteral("Spectra"), QRectF(0, 0, 500, 300), {}, {}, stack});
        require(directory.isValid(), "no temporary directory");
        DocumentFile::write(fileName, document);
    }

    QTemporaryDir directory;
    QString fileName = directory.filePath(QStringLiteral("bench.magresdoc"));
    Document document;
};

const SavedDocument &saved()
{
    static const SavedDocument document;
    return document;
}

const Document::Spectra &stackOf(const Document &document)
{
    return std::get<Document::Spectra>(document.items.first().content);
}

/// As far as opening goes without a page to show the spectra on.
std::vector<Spectrum> openSpectra()
{
    std::vector<Spectrum> opened;
    const Document read = DocumentFile::read(saved().fileName);
    for (const Document::Spectra::Entry &entry : stackOf(read).entries)
        opened.push_back(Spectrum::fromMap(entry.data));
    return opened;
}

void document(benchmark::State &state)
{
    const std::vector<Spectrum> opened = openSpectra();
    require(opened.size() == spectra, "document/50: number of spectra");
    for (int i = 0; i < spectra; ++i) {
        const Spectrum before = Spectrum::fromMap(stackOf(saved().document).entries[i].data);
        const Spectrum &after = opened[size_t(i)];
        require(!after.isEmpty() && after.axes[0].first == before.axes[0].first && after.data.size() == 2
                    && sameBits(after.data[0], before.data[0]) && sameBits(after.data[1], before.data[1]),
                "document/50: a spectrum read back");
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(openSpectra());
    state.SetBytesProcessed(int64_t(state.iterations()) * QFileInfo(saved().fileName).size());
}

/// The file's bytes from the system's cache into memory of their own, which whoever keeps them has to pay for too: most
/// of it is the first touch of that memory.
void sequentialRead(benchmark::State &state)
{
    const qint64 size = QFileInfo(saved().fileName).size();
    for (auto _ : state) {
        QFile file(saved().fileName);
        require(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered), "limit/read: opening the file");
        const std::unique_ptr<char[]> bytes(new char[size_t(size)]);
        require(file.read(bytes.get(), size) == size, "limit/read: bytes of the file");
        benchmark::DoNotOptimize(bytes.get());
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * size);
}

} // namespace

void registerDocument()
{
    benchmark::RegisterBenchmark("limit/read", sequentialRead)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("document/50", document)->Unit(benchmark::kMillisecond);
}

} // namespace Bench
