// SPDX-License-Identifier: BSD-3-Clause
//
// Usage: killduringsave [COUNT]
//
// Kills a program that saves two documents in turn over the same file, COUNT times at random moments, and looks after
// each time whether the file is the one document or the other, in full.

#include "formats/DocumentFile.h"
#include "support/MetaTypes.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

using namespace Workbench;

namespace {

using Documents = std::array<Document, 2>;

/// Of different sizes, so that what is left of one would show in the other.
Document numbered(int number)
{
    Document::Spectra stack;
    for (int i = 0; i < 4 + 2 * number; ++i) {
        const QList<DoubleVector> points(2, DoubleVector(1 << 16, number + 0.25 * i));
        stack.entries.append(
            {QUuid::createUuid(), QString::number(i), {{QStringLiteral("DataPoints"), QVariant::fromValue(points)}}});
    }
    stack.activeEntry = stack.entries.first().id;
    Document document;
    document.items.append({QUuid::createUuid(), QString::number(number), QRectF(0, 0, 500, 300), {}, {}, stack});
    return document;
}

/// In the child: saves for ever, beginning with the second, and tells of each begin (B) and end (E).
[[noreturn]] void saveForEver(const QString &fileName, const Documents &documents, int pipe)
{
    for (size_t turn = 1;; ++turn) {
        if (write(pipe, "B", 1) != 1)
            _exit(1);
        DocumentFile::write(fileName, documents[turn % 2]);
        if (write(pipe, "E", 1) != 1)
            _exit(1);
    }
}

struct Round {
    int begun = 0;
    int ended = 0;
};

/// Kills the child in the given save, so long after its begin.
Round killSaving(const QString &fileName, const Documents &documents, int save, std::chrono::microseconds delay)
{
    int ends[2];
    if (pipe(ends) != 0)
        std::abort();
    const pid_t child = fork();
    if (child == 0)
        saveForEver(fileName, documents, ends[1]);
    close(ends[1]);
    Round round;
    char sign = 0;
    const auto note = [&] { ++(sign == 'B' ? round.begun : round.ended); };
    while (round.begun < save && read(ends[0], &sign, 1) == 1)
        note();
    usleep(useconds_t(delay.count()));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (read(ends[0], &sign, 1) == 1)
        note();
    close(ends[0]);
    return round;
}

/// The number of the document in the file.
int foundIn(const QString &fileName, const Documents &documents)
{
    const QVariantMap found = DocumentFile::read(fileName).toMap();
    for (int i = 0; i < 2; ++i) {
        if (found == documents[size_t(i)].toMap())
            return i;
    }
    throw std::runtime_error("the file holds neither document");
}

} // namespace

int main(int argc, char **argv)
{
    const int count = argc > 1 ? std::atoi(argv[1]) : 200;
    const QTemporaryDir directory;
    const QString fileName = directory.filePath(QStringLiteral("kept.magresdoc"));
    const Documents documents{numbered(0), numbered(1)};
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 10; ++i)
        DocumentFile::write(fileName, documents[size_t(i % 2)]);
    const double duration = double(timer.nsecsElapsed()) / 10e3; // microseconds
    std::mt19937 random{std::random_device()()};
    std::uniform_real_distribution<double> moment(0, 1.1 * duration);
    int during = 0, kept = 0, lost = 0;
    for (int i = 0; i < count; ++i) {
        DocumentFile::write(fileName, documents[0]);
        const int save = 1 + int(random() % 3);
        const Round round = killSaving(fileName, documents, save, std::chrono::microseconds(long(moment(random))));
        const bool inSave = round.begun > round.ended;
        during += inSave;
        try {
            const int found = foundIn(fileName, documents);
            // The document saved last, or while a save was under way perhaps the next.
            if (found == round.ended % 2)
                kept += inSave;
            else if (!inSave || found != round.begun % 2)
                throw std::runtime_error("the file is not of the save that came last");
        } catch (const std::exception &error) {
            ++lost;
            std::fprintf(stderr, "kill %d: %s\n", i + 1, error.what());
        }
    }
    const auto leftOver = QDir(directory.path()).entryList(QDir::Files).size() - 1;
    std::printf(
        "%d kills, %d of them during a save (%.1f ms each); of these the earlier document was found %d times, the "
        "new one %d times; documents lost: %d; temporary files left: %d\n",
        count, during, duration / 1000, kept, during - kept, lost, int(leftOver));
    return lost == 0 && during > 0 ? 0 : 1;
}
