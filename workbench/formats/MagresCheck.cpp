// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/MagresCheck.h"

#include "data/NumberText.h"
#include "data/Nuclides.h"
#include "data/ReaderText.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Workbench {

using ReaderText::decoded;
using ReaderText::excerpt;
using ReaderText::trimmed;
using namespace Qt::StringLiterals;

namespace MagresCheck {

namespace {

constexpr std::string_view magic = "#$magres-abinitio";

/// The fields of a record, with one more than the longest one that matters has.
class Fields {
public:
    explicit Fields(std::string_view line)
    {
        // The library's search for one of several characters takes a call for each that it passes.
        const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; };
        auto at = line.begin();
        while (m_size < m_fields.size() && (at = std::find_if_not(at, line.end(), isBlank)) != line.end()) {
            const auto end = std::find_if(at, line.end(), isBlank);
            m_fields[m_size++] = {at, end};
            at = end;
        }
    }

    size_t size() const { return m_size; }
    /// Empty beyond the last one.
    std::string_view operator[](size_t i) const { return m_fields[i]; }

private:
    std::array<std::string_view, 13> m_fields;
    size_t m_size = 0;
};

/// [atoms] or <atoms>, closing with the slash.
bool isMark(std::string_view line, std::string_view name, std::string_view slash)
{
    if (line.empty() || (line[0] != '[' && line[0] != '<'))
        return false;
    const char closer = line[0] == '[' ? ']' : '>';
    line.remove_prefix(1);
    if (!line.starts_with(slash) || !line.substr(slash.size()).starts_with(name))
        return false;
    line.remove_prefix(slash.size() + name.size());
    return line.starts_with(closer);
}

/// Labels are Latin-1 in documents, with a question mark for every other character; here in UTF-8 once more.
std::string asRead(std::string_view label)
{
    if (std::all_of(label.begin(), label.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return std::string(label);
    const QByteArray latin1 = QString::fromUtf8(label.data(), qsizetype(label.size())).toLatin1();
    return QString::fromLatin1(latin1).toStdString();
}

/// An atom by its label and index, as a key.
std::string atomKey(std::string_view label, int index)
{
    return asRead(label) + ' ' + std::to_string(index);
}

/// What has been counted of one kind, and the first of it.
struct Found {
    int count = 0;
    QString first;

    void add(const QString &what)
    {
        if (count++ == 0)
            first = what;
    }
};

class Examination {
public:
    explicit Examination(std::string_view text) : m_text(text) { }

    Findings run()
    {
        readLines();
        const bool repairable = takeFusedApart();
        Findings findings;
        if (repairable && !m_gaps.empty())
            findings.repaired = withGaps();
        findings.warnings = warnings(repairable);
        return findings;
    }

private:
    struct Tensors {
        std::unordered_set<std::string> atoms; ///< that have one
        std::unordered_set<std::string> rich; ///< that have more
        int records = 0;
        Found orphans, doubled;
    };
    struct Fused {
        std::string_view name; ///< label and index
        size_t kind = 0;
        int line = 0;
        bool isNumbered = true;
    };
    /// A tensor by what it says of its atom.
    struct Named {
        size_t kind = 0;
        std::string_view label, number;
        int index = 0;
        bool isNumbered = true; ///< labels had their numbers appended when it was read
    };
    struct Unit {
        const char *quantity;
        const char *assumed;
        bool needed = false;
        bool stated = false;
        QString other = {}; ///< that is stated
    };

    static constexpr std::array<std::string_view, 2> blockNames{"atoms", "magres"};
    static constexpr std::array<std::string_view, 2> kinds{"ms", "efg"};

    /// As the plug-in goes through it: a block lasts until its closing mark, whatever stands in between.
    void readLines()
    {
        int block = -1;
        for (ReaderText::Lines lines(m_text); lines.next();) {
            std::string_view line = trimmed(lines.line());
            line = line.substr(0, std::min(line.rfind('#'), line.size()));
            if (block < 0) {
                for (size_t b = 0; b < blockNames.size(); ++b) {
                    if (isMark(line, blockNames[b], "")) {
                        block = int(b);
                        m_isNumbered = m_isNumbered || b == 0;
                        ++m_blocks[b];
                        m_opened = lines.number();
                    }
                }
            } else if (isMark(line, blockNames[size_t(block)], "/")) {
                block = -1;
            } else {
                readRecord(line, lines.number(), block == 0);
            }
        }
        if (block >= 0)
            m_open = blockNames[size_t(block)];
    }

    void readRecord(std::string_view line, int number, bool amongAtoms)
    {
        for (size_t b = 0; b < blockNames.size(); ++b) {
            if (isMark(line, blockNames[b], "") && m_swallowed.line == 0)
                m_swallowed = {blockNames[b], blockNames[amongAtoms ? 0 : 1], number, m_opened};
        }
        const Fields fields(line);
        if (fields[0] == "units" && fields.size() == 3)
            readUnit(fields);
        else if (amongAtoms)
            readAtom(fields);
        else
            readTensor(fields, number);
    }

    void readUnit(const Fields &fields)
    {
        for (Unit &unit : m_units) {
            if (fields[1] != unit.quantity)
                continue;
            unit.stated = true;
            if (fields[2] != unit.assumed && unit.other.isEmpty())
                unit.other = decoded(fields[2]);
        }
    }

    void readAtom(const Fields &fields)
    {
        if (fields[0] == "lattice")
            m_units[0].needed = true;
        if (fields[0] != "atom")
            return;
        m_units[1].needed = true;
        noteNoNumber(fields, 4);
        if (!hasIsotopes(fields[1]))
            m_foreign.add(decoded(fields[1]));
        if (fields[1] != fields[2] && asRead(fields[1]) != asRead(fields[2]))
            m_isNumbered = false;
        const auto index = NumberText::parse<int>(fields[3]);
        if (!index)
            return;
        const std::string key = atomKey(fields[2], *index);
        if (!key.starts_with(fields[2]))
            m_unreadable.add(decoded(fields[2]));
        const auto [at, isNew] = m_atoms.insert(key);
        if (isNew)
            m_atomOrder.push_back(*at);
        else
            m_doubled.add(decoded(*at));
    }

    /// "nan" and "inf" from a field on.
    void noteNoNumber(const Fields &fields, size_t from)
    {
        for (size_t i = from; i < fields.size(); ++i) {
            const size_t letter = fields[i].find_first_not_of("+-");
            if (letter != std::string_view::npos
                && std::string_view("nNiI").find(fields[i][letter]) != std::string_view::npos)
                return m_noNumber.add(
                    u"%1 %2 %3"_s.arg(decoded(fields[0]), decoded(fields[from - 2]), decoded(fields[from - 1])));
        }
    }

    bool hasIsotopes(std::string_view species)
    {
        const auto [known, isNew] = m_species.try_emplace(species);
        if (isNew)
            known->second = !Nuclides::table().isotopes(decoded(species)).isEmpty();
        return known->second;
    }

    void readTensor(const Fields &fields, int number)
    {
        const auto kind = std::find(kinds.begin(), kinds.end(), fields[0]);
        if (kind == kinds.end())
            return;
        const size_t k = size_t(kind - kinds.begin());
        m_units[2 + k].needed = true;
        ++m_tensors[k].records;
        noteNoNumber(fields, 3);
        if (const auto index = fields.size() == 12 ? NumberText::parse<int>(fields[2]) : std::nullopt)
            m_named.push_back({k, fields[1], fields[2], *index, m_isNumbered});
        else if (fields.size() == 11 && NumberText::parse<double>(fields[2]))
            m_fused.push_back({fields[1], k, number, m_isNumbered});
    }

    /// The places in the text where a blank is missing; false when one of them is not certain.
    bool takeFusedApart()
    {
        for (const Fused &fused : m_fused) {
            const std::string_view name = fused.name;
            size_t at = 0, ways = 0;
            for (size_t i = name.size() - 1; i > 0 && name[i] >= '0' && name[i] <= '9'; --i) {
                const auto index = name[i] == '0' ? std::nullopt : NumberText::parse<int>(name.substr(i));
                if (index && m_atoms.contains(atomKey(name.substr(0, i), *index))) {
                    at = i;
                    ++ways;
                }
            }
            if (ways != 1)
                return false;
            m_gaps.push_back(size_t(name.data() + at - m_text.data()));
            m_named.push_back({fused.kind, name.substr(0, at), name.substr(at),
                               *NumberText::parse<int>(name.substr(at)), fused.isNumbered});
        }
        return true;
    }

    /// The atom that the tensor reaches, as a key: labels may have their numbers appended, which is settled by an atoms
    /// block and believed to be so before there is one.
    std::string reached(const Named &tensor) const
    {
        const bool isPlain =
            tensor.isNumbered == m_isNumbered && (!m_isNumbered || tensor.number == std::to_string(tensor.index));
        if (isPlain || m_blocks[0] != 1)
            return atomKey(tensor.label, tensor.index);
        std::string label(tensor.label);
        if (tensor.isNumbered)
            label += tensor.number;
        const std::string number = std::to_string(tensor.index);
        if (m_isNumbered && !label.ends_with(number))
            return {};
        return atomKey(std::string_view(label).substr(0, label.size() - (m_isNumbered ? number.size() : 0)),
                       tensor.index);
    }

    QByteArray withGaps() const
    {
        QByteArray text;
        text.reserve(qsizetype(m_text.size() + m_gaps.size()));
        size_t from = 0;
        for (size_t gap : m_gaps) {
            text.append(m_text.data() + from, qsizetype(gap - from)).append(' ');
            from = gap;
        }
        return text.append(m_text.data() + from, qsizetype(m_text.size() - from));
    }

    QStringList warnings(bool repairable)
    {
        for (const Named &tensor : m_named) {
            Tensors &all = m_tensors[tensor.kind];
            const std::string key = reached(tensor), meant = atomKey(tensor.label, tensor.index);
            const auto name = [&] {
                return decoded(kinds[tensor.kind]) + u' ' + decoded(tensor.label) + u' ' + decoded(tensor.number);
            };
            if (key != meant && (m_atoms.contains(key) || m_atoms.contains(meant)))
                m_strayed.add(name());
            if (m_atoms.contains(key)) {
                if (!all.atoms.insert(key).second && all.rich.insert(key).second)
                    all.doubled.add(decoded(key));
            } else if (!m_atoms.contains(meant)) {
                all.orphans.add(name());
            }
        }
        if (repairable && !m_gaps.empty()) {
            m_warnings.append(
                Texts::tr("Label and index stand together in %1 records (the first one: %2 in line %3); they "
                          "were taken apart, each in the only way that names an atom of the file.")
                    .arg(m_gaps.size())
                    .arg(decoded(m_fused.front().name))
                    .arg(m_fused.front().line));
        }
        warnOfBlocks();
        warnOfAtoms();
        warnOfTensors();
        warnOfUnits();
        return m_warnings;
    }

    void warnOfBlocks()
    {
        for (size_t b = 0; b < blockNames.size(); ++b) {
            if (m_blocks[b] == 0 && m_swallowed.name != blockNames[b])
                m_warnings.append(Texts::tr("There is no block [%1].").arg(decoded(blockNames[b])));
        }
        if (m_swallowed.line > 0) {
            m_warnings.append(
                Texts::tr("The block [%1] that begins in line %2 is not closed where [%3] begins in line %4, "
                          "which was therefore read as a part of it.")
                    .arg(decoded(m_swallowed.outer))
                    .arg(m_swallowed.outerLine)
                    .arg(decoded(m_swallowed.name))
                    .arg(m_swallowed.line));
        } else if (!m_open.empty()) {
            m_warnings.append(
                Texts::tr("The block [%1] that begins in line %2 is not closed: the file may have been cut off.")
                    .arg(decoded(m_open))
                    .arg(m_opened));
        }
        if (m_blocks[0] > 1)
            m_warnings.append(
                Texts::tr("There are %1 blocks [atoms]: the atoms of all of them were read as one structure.")
                    .arg(m_blocks[0]));
    }

    void warnOfAtoms()
    {
        if (m_foreign.count > 0) {
            m_warnings.append(
                Texts::tr("Atoms of a species that is no element or has no isotopes with a spin: %1 (the first one "
                          "%2). They are missing in spectra.")
                    .arg(m_foreign.count)
                    .arg(m_foreign.first));
        }
        if (m_unreadable.count > 0) {
            m_warnings.append(
                Texts::tr("Labels with characters beyond Latin-1, each of which is read as a question mark: %1 (the "
                          "first one %2). They may not be told apart.")
                    .arg(m_unreadable.count)
                    .arg(m_unreadable.first));
        }
        if (m_noNumber.count > 0) {
            m_warnings.append(
                Texts::tr("Records with \"nan\" or \"inf\" for a number: %1 (the first one %2). They count as "
                          "missing where a spectrum is made.")
                    .arg(m_noNumber.count)
                    .arg(m_noNumber.first));
        }
        if (m_doubled.count > 0) {
            m_warnings.append(
                Texts::tr("Atoms with the label and index of another one: %1 (the first one %2). Their tensors "
                          "cannot be told apart.")
                    .arg(m_doubled.count)
                    .arg(m_doubled.first));
        }
    }

    void warnOfTensors()
    {
        if (m_blocks[1] > 0 && m_tensors[0].records == 0 && m_tensors[1].records == 0)
            m_warnings.append(Texts::tr("There is neither a shielding (ms) nor an electric-field gradient (efg)."));
        Found orphans;
        for (const Tensors &tensors : m_tensors) {
            orphans.count += tensors.orphans.count;
            if (orphans.first.isEmpty())
                orphans.first = tensors.orphans.first;
        }
        if (orphans.count > 0)
            m_warnings.append(Texts::tr("Tensors that belong to no atom of the file: %1 (the first one %2).")
                                  .arg(orphans.count)
                                  .arg(orphans.first));
        if (m_strayed.count > 0) {
            m_warnings.append(
                Texts::tr("Tensors that do not reach the atom that they name: %1 (the first one %2). The block [atoms] "
                          "has to stand before [magres], and an index without a sign or leading zeros.")
                    .arg(m_strayed.count)
                    .arg(m_strayed.first));
        }
        const auto ofAtoms = [this](size_t kind, const Found &found) {
            return Texts::tr("%3: %1 of %2 (the first one %4)")
                .arg(found.count)
                .arg(m_atomOrder.size())
                .arg(decoded(kinds[kind]), found.first);
        };
        QStringList without, doubled;
        for (size_t k = 0; k < kinds.size(); ++k) {
            if (m_tensors[k].doubled.count > 0)
                doubled.append(ofAtoms(k, m_tensors[k].doubled));
            Found bare;
            for (const std::string &atom : m_atomOrder) {
                if (m_tensors[k].records > 0 && !m_tensors[k].atoms.contains(atom))
                    bare.add(decoded(atom));
            }
            if (bare.count > 0)
                without.append(ofAtoms(k, bare));
        }
        if (!doubled.isEmpty()) {
            m_warnings.append(Texts::tr("Atoms with more than one %1. Of their tensors the one that compares lowest, "
                                        "element by element, counts.")
                                  .arg(doubled.join(u", "_s)));
        }
        if (!without.isEmpty())
            m_warnings.append(Texts::tr("Atoms without %1.").arg(without.join(u", "_s)));
    }

    /// A plug-in that refuses a unit says so itself; these are the ones that nobody looked at.
    void warnOfUnits()
    {
        QStringList units;
        for (const Unit &unit : m_units) {
            const QString quantity = QLatin1String(unit.quantity), assumed = QLatin1String(unit.assumed);
            if (unit.needed && !unit.stated)
                units.append(Texts::tr("%1 has none, taken as %2").arg(quantity, assumed));
            else if (unit.needed && !unit.other.isEmpty())
                units.append(Texts::tr("%1 in %2, taken as %3").arg(quantity, unit.other, assumed));
        }
        if (!units.isEmpty())
            m_warnings.append(Texts::tr("Units that were not checked: %1.").arg(units.join(u", "_s)));
    }

    std::string_view m_text;
    std::array<int, 2> m_blocks{};
    std::string_view m_open; ///< the block that the file ends in
    struct {
        std::string_view name, outer;
        int line = 0, outerLine = 0;
    } m_swallowed; ///< the first block that begins in another one
    int m_opened = 0; ///< line of the last block
    std::unordered_set<std::string> m_atoms;
    std::vector<std::string> m_atomOrder;
    std::vector<Named> m_named;
    std::vector<Fused> m_fused;
    std::vector<size_t> m_gaps;
    std::array<Tensors, 2> m_tensors;
    std::array<Unit, 4> m_units{{{"lattice", "Angstrom"}, {"atom", "Angstrom"}, {"ms", "ppm"}, {"efg", "au"}}};
    bool m_isNumbered = true; ///< all labels of the last block [atoms] are its species
    std::unordered_map<std::string_view, bool> m_species; ///< whether they have isotopes
    Found m_foreign, m_unreadable, m_doubled, m_strayed, m_noNumber;
    QStringList m_warnings;
};

} // namespace

bool isMagres(const QByteArray &start)
{
    return ReaderText::view(start).starts_with(magic);
}

QString whyNotMagres(const QByteArray &start)
{
    const QString expected = Texts::tr("a MAGRES file begins with a line #$magres-abinitio-v1.0");
    const std::string_view text = ReaderText::view(start);
    for (std::string_view mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"}) {
        if (text.starts_with(mark))
            return Texts::tr(
                       "%1, this one with a byte order mark: save it as plain text without one (in UTF-8 or ASCII)")
                .arg(expected);
    }
    const size_t found = text.find(magic);
    if (found != text.npos && trimmed(text.substr(0, found)).empty())
        return Texts::tr("%1, in this one blanks or empty lines stand before it: remove them").arg(expected);
    if (found != text.npos && (found == 0 || text[found - 1] == '\n'))
        return Texts::tr("%1, in this one that is line %2: remove what stands before it")
            .arg(expected)
            .arg(std::count(text.begin(), text.begin() + std::ptrdiff_t(found), '\n') + 1);
    if (text.starts_with("\x1F\x8B"))
        return Texts::tr("%1, this one is compressed (gzip): unpack it").arg(expected);
    if (text.find("TOTAL Shielding Tensor") != text.npos || text.find("Coordinates ") != text.npos)
        return Texts::tr(
                   "%1; this is the output of an older version of the program, from before the format had blocks: "
                   "calculate with a newer one, or convert the file")
            .arg(expected);
    ReaderText::Lines lines(text);
    lines.next();
    return Texts::tr("%1, this one with %2: if the line was lost, put it back").arg(expected, excerpt(lines.line()));
}

Findings examine(const QByteArray &text)
{
    if (!text.contains('\n') && text.contains('\r')) {
        const QByteArray plain = QByteArray(text).replace('\r', '\n');
        Findings findings = examine(plain);
        if (findings.repaired.isEmpty())
            findings.repaired = plain;
        findings.warnings.prepend(
            Texts::tr("The lines end in a carriage return alone; they were read as lines all the same."));
        return findings;
    }
    return Examination(ReaderText::view(text)).run();
}

} // namespace MagresCheck

} // namespace Workbench
