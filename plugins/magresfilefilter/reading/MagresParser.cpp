// SPDX-License-Identifier: BSD-3-Clause
#include "reading/MagresParser.h"

#include "parameters/Texts.h"

#include <QFile>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace Magres {
namespace {

constexpr QByteArrayView magic("#$magres-abinitio");

constexpr bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

QByteArray toLatin1(QByteArrayView token)
{
    const bool isAscii = std::all_of(token.begin(), token.end(), [](char c) { return uchar(c) < 0x80; });
    return isAscii ? token.toByteArray() : QString::fromUtf8(token).toLatin1();
}

/// In one allocation: files have many labels.
QByteArray joined(QByteArrayView label, QByteArrayView number)
{
    QByteArray result(label.size() + number.size(), Qt::Uninitialized);
    std::copy(number.begin(), number.end(), std::copy(label.begin(), label.end(), result.begin()));
    return result;
}

/// An optional sign and decimal digits.
bool toInt(QByteArrayView token, qint32 &value)
{
    const char *first = token.begin();
    if (token.size() > 1 && *first == '+' && isDigit(first[1]))
        ++first;
    const auto [end, error] = std::from_chars(first, token.end(), value);
    return error == std::errc() && end == token.end();
}

/// The tokens of a line, up to one more than any record may have: that is enough to see that there are too many. Plain
/// numbers are converted on the way, so that their digits are looked at once.
class TokenList {
public:
    explicit TokenList(QByteArrayView line)
    {
        const char *p = line.begin();
        while (m_size < capacity) {
            while (p != line.end() && isSpace(*p))
                ++p;
            if (p == line.end())
                break;
            Token &token = m_tokens[m_size++];
            const char *first = p;
            p = convert(p, line.end(), token);
            while (p != line.end() && !isSpace(*p)) {
                token.isNumber = false;
                ++p;
            }
            token.text = QByteArrayView(first, p);
        }
    }

    int size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    QByteArrayView operator[](int i) const { return m_tokens[i].text; }

    /// Locale-free; the whole token must be a number. What is not a plain number (signs in front, "inf" and "nan",
    /// numbers beyond the range of a double) is left to Qt's own rules.
    bool toDouble(int i, double &value) const
    {
        const Token &token = m_tokens[i];
        bool ok = token.isNumber;
        value = ok ? token.value : QString::fromUtf8(token.text).toDouble(&ok);
        return ok;
    }

private:
    struct Token {
        QByteArrayView text;
        double value;
        bool isNumber;
    };

    /// Returns the end of the number at p; p itself if there is none.
    static const char *convert(const char *p, const char *end, Token &token)
    {
        const char *digits = *p == '-' ? p + 1 : p;
        if (digits == end || (!isDigit(*digits) && *digits != '.'))
            return p;
        const auto [last, error] = std::from_chars(p, end, token.value);
        token.isNumber = error == std::errc();
        return token.isNumber ? last : p;
    }

    static constexpr int capacity = 13;
    Token m_tokens[capacity];
    int m_size = 0;
};

class MagresParser {
public:
    MagresParser(QByteArrayView text, MagresData &data, const AtomsBlockHandler &atomsBlockRead)
        : m_rest(text), m_data(data), m_atomsBlockRead(atomsBlockRead)
    {
    }

    void parse()
    {
        // A calculation has one. All atoms are gone through for each, so that only a small file may have many.
        constexpr int mostAtomsBlocks = 20;
        constexpr int mostOfManyAtoms = 3;
        constexpr qsizetype manyAtoms = 5000; // over all blocks, those of each block once more with each that follows
        int atomsBlocks = 0;
        qsizetype goneThrough = 0;
        while (!m_rest.isEmpty()) {
            const QByteArrayView line = nextLine();
            if (isMark(line, "atoms", "")) {
                const int most = goneThrough > manyAtoms ? mostOfManyAtoms : mostAtomsBlocks;
                if (++atomsBlocks > most)
                    throw MagresParseError(Texts::tr("The file has more than %1 atoms blocks").arg(most));
                parseAtomsBlock();
                goneThrough += m_data.atoms.size();
                if (m_atomsBlockRead)
                    m_atomsBlockRead(m_data);
            } else if (isMark(line, "magres", "")) {
                parseMagresBlock();
            }
        }
    }

private:
    /// Whether the line starts with "[name]" or "<name>", or with the closing mark when `slash` is "/".
    static bool isMark(QByteArrayView line, QByteArrayView name, QByteArrayView slash)
    {
        if (line.isEmpty() || (line[0] != '[' && line[0] != '<'))
            return false;
        const char closer = line[0] == '[' ? ']' : '>';
        const QByteArrayView inner = line.sliced(1);
        if (!inner.startsWith(slash) || !inner.sliced(slash.size()).startsWith(name))
            return false;
        const QByteArrayView tail = inner.sliced(slash.size() + name.size());
        return !tail.isEmpty() && tail[0] == closer;
    }

    /// Trimmed and without its comment, which starts at the last "#".
    QByteArrayView nextLine()
    {
        const void *end = std::memchr(m_rest.data(), '\n', size_t(m_rest.size()));
        const qsizetype length = end ? static_cast<const char *>(end) - m_rest.data() : m_rest.size();
        QByteArrayView line = m_rest.first(length);
        m_rest = m_rest.sliced(std::min(length + 1, m_rest.size()));

        while (!line.isEmpty() && isSpace(line.front()))
            line = line.sliced(1);
        while (!line.isEmpty() && isSpace(line.back()))
            line.chop(1);
        if (!line.isEmpty() && (uchar(line.front()) >= 0x80 || uchar(line.back()) >= 0x80))
            line = trimmedUnicode(line);
        // Most lines have no comment, which is quicker to see from the front.
        return std::memchr(line.data(), '#', size_t(line.size())) ? line.first(line.lastIndexOf('#')) : line;
    }

    /// White space beyond ASCII at the ends of a line is trimmed too.
    QByteArrayView trimmedUnicode(QByteArrayView line)
    {
        m_converted = QString::fromUtf8(line).trimmed().toUtf8();
        return m_converted;
    }

    static QString text(QByteArrayView line) { return QString::fromUtf8(line); }

    /// Whether the line states units of atoms or shieldings, of which only those of the data are accepted.
    static bool statesUnits(QByteArrayView line)
    {
        if (!line.startsWith("units"))
            return false;
        const TokenList tokens(line);
        if (tokens.size() != 3)
            throw MagresParseError(Texts::tr("Units record in line %1 cannot be parsed").arg(text(line)));
        if (tokens[1] == "atom") {
            if (tokens[2] != "Angstrom")
                throw MagresParseError(
                    Texts::tr("Only Angstroms are supported as atom units but %1 is found").arg(text(line)));
            return true;
        }
        if (tokens[1] == "ms") {
            if (tokens[2] != "ppm")
                throw MagresParseError(
                    Texts::tr("Only ppm are supported for shielding but %1 is found").arg(text(line)));
            return true;
        }
        return false;
    }

    /// Hands every record of a block to `use`, as line and tokens. Units records are looked at until one for atoms or
    /// shieldings has been accepted.
    template <typename Use>
    void readRecords(QByteArrayView blockName, Use use)
    {
        bool unitsAreKnown = false;
        while (!m_rest.isEmpty()) {
            const QByteArrayView line = nextLine();
            if (isMark(line, blockName, "/"))
                return;
            unitsAreKnown = unitsAreKnown || statesUnits(line);
            const TokenList tokens(line);
            if (!tokens.isEmpty())
                use(line, tokens);
        }
    }

    void parseAtomsBlock()
    {
        m_data.numberToLabel = true;
        readRecords("atoms", [this](QByteArrayView line, const TokenList &tokens) {
            if (tokens[0] == "lattice")
                parseLattice(line, tokens);
            else if (tokens[0] == "atom")
                parseAtom(line, tokens);
        });
        if (m_data.numberToLabel)
            appendNumbersToLabels();
    }

    void parseLattice(QByteArrayView line, const TokenList &tokens)
    {
        if (tokens.size() != 10)
            throw MagresParseError(Texts::tr("Lattice record in line %1 cannot be parsed").arg(text(line)));
        m_data.lattice.clear();
        for (int i = 1; i <= 9; ++i) {
            double value = 0.0;
            if (!tokens.toDouble(i, value)) {
                // The number of the value takes the place of the line, which finds none left: "… in line 3 …".
                throw MagresParseError(
                    Texts::tr("Lattice coordinate #1 in line %2 cannot be parsed").arg(i).arg(text(line)));
            }
            m_data.lattice.append(value);
        }
    }

    void parseAtom(QByteArrayView line, const TokenList &tokens)
    {
        if (tokens.size() != 7)
            throw MagresParseError(Texts::tr("Atom record in line %1 cannot be parsed").arg(text(line)));
        MagresAtom &atom = m_data.atoms.emplaceBack();
        atom.recordNo = qint32(m_data.atoms.size() - 1);
        if (tokens[1] != m_speciesToken) {
            m_speciesToken = tokens[1].toByteArray();
            m_species = toLatin1(tokens[1]);
        }
        atom.type = m_species;
        const QByteArray label = tokens[2] == tokens[1] ? atom.type : toLatin1(tokens[2]);
        atom.labels = {label};
        if (label != atom.type)
            m_data.numberToLabel = false;
        if (!toInt(tokens[3], atom.No))
            throw MagresParseError(Texts::tr("Atom number in line %1 cannot be parsed").arg(text(line)));
        if (!tokens.toDouble(4, atom.pos[0]))
            throw MagresParseError(Texts::tr("Atom x-coordinate in line %1 cannot be parsed").arg(text(line)));
        if (!tokens.toDouble(5, atom.pos[1]))
            throw MagresParseError(Texts::tr("Atom y-coordinate in line %1 cannot be parsed").arg(text(line)));
        if (!tokens.toDouble(6, atom.pos[2]))
            throw MagresParseError(Texts::tr("Atom z-coordinate in line %1 cannot be parsed").arg(text(line)));
    }

    void appendNumbersToLabels()
    {
        for (MagresAtom &atom : m_data.atoms)
            for (QByteArray &label : atom.labels)
                label = joined(label, QByteArray::number(atom.No));
    }

    void parseMagresBlock()
    {
        readRecords("magres", [this](QByteArrayView line, const TokenList &tokens) {
            if (tokens[0] == "ms") {
                if (tokens.size() != 12)
                    throw MagresParseError(Texts::tr("Ms record in line %1 cannot be parsed").arg(text(line)));
                m_data.shieldings.append(parseTensor(line, tokens));
            } else if (tokens[0] == "efg") {
                if (tokens.size() != 12)
                    throw MagresParseError(Texts::tr("EFG record in line %1 cannot be parsed").arg(text(line)));
                m_data.EFG.append(parseTensor(line, tokens));
            }
        });
    }

    MagresTensor parseTensor(QByteArrayView line, const TokenList &tokens) const
    {
        const QByteArray label = m_data.numberToLabel ? toLatin1(joined(tokens[1], tokens[2])) : toLatin1(tokens[1]);
        qint32 number = 0;
        if (!toInt(tokens[2], number))
            throw MagresParseError(Texts::tr("Number in line %1 cannot be parsed").arg(text(line)));
        Tensor tensor;
        for (int i = 0; i < 9; ++i)
            if (!tokens.toDouble(3 + i, tensor[size_t(i)]))
                throw MagresParseError(Texts::tr("Tensor element in line %1 cannot be parsed").arg(text(line)));
        return MagresTensor({label}, number, tensor);
    }

    QByteArrayView m_rest;
    QByteArray m_converted;
    QByteArray m_speciesToken; // of the atom before, as in the file; atoms of one species share its conversion
    QByteArray m_species;
    MagresData &m_data;
    const AtomsBlockHandler &m_atomsBlockRead;
};

} // namespace

bool isMagresFile(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly | QIODevice::Text | QIODevice::Unbuffered) && file.read(19).startsWith(magic);
}

void parseMagres(QByteArrayView text, MagresData &data, const AtomsBlockHandler &atomsBlockRead)
{
    if (std::memchr(text.data(), '\r', size_t(text.size()))) {
        const QByteArray plain = text.toByteArray().replace('\r', "");
        MagresParser(plain, data, atomsBlockRead).parse();
    } else {
        MagresParser(text, data, atomsBlockRead).parse();
    }
}

void readMagresFile(const QString &fileName, MagresData &data, const AtomsBlockHandler &atomsBlockRead)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw MagresParseError(Texts::tr("File %1 cannot be opened").arg(fileName));
    parseMagres(file.readAll(), data, atomsBlockRead);
}

} // namespace Magres
