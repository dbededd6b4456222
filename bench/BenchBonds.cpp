// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"
#include "Crystals.h"
#include "Literal.h"

#include "reading/Bonds.h"
#include "reading/MoleculeCompletion.h"

using namespace Magres;

namespace {

bool sameBonds(const QList<MagresAtom> &a, const QList<MagresAtom> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const MagresAtom &x, const MagresAtom &y) { return x.bonds == y.bonds; });
}

bool samePositions(const QList<MagresAtom> &a, const QList<MagresAtom> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const MagresAtom &x, const MagresAtom &y) { return Bench::sameBits(x.pos, y.pos); });
}

Crystals::Crystal bondedCrystal(int atoms)
{
    Crystals::Crystal crystal = Crystals::molecular(atoms);
    Magres::detectBonds(crystal.atoms);
    return crystal;
}

void bonds(benchmark::State &state, int count)
{
    const Crystals::Crystal crystal = Crystals::molecular(count);
    QList<MagresAtom> literal = crystal.atoms;
    Literal::detectBonds(literal, Literal::covalentRadii(literal));
    QList<MagresAtom> atoms = crystal.atoms;
    Magres::detectBonds(atoms);
    Bench::require(sameBonds(atoms, literal), "bonds");

    for (auto _ : state) {
        Magres::detectBonds(atoms);
        benchmark::DoNotOptimize(atoms.data());
    }
}

/// Bonds that belong to the positions, and every molecule's atom at its place or a lattice translation away: what can
/// be checked where the literal procedure would take minutes.
bool isPlausible(const QList<MagresAtom> &before, const QList<MagresAtom> &after)
{
    QList<MagresAtom> literal = after;
    Literal::detectBonds(literal, Literal::covalentRadii(literal));
    const auto bondCount = [](const QList<MagresAtom> &atoms) {
        qsizetype count = 0;
        for (const MagresAtom &atom : atoms)
            count += atom.bonds.size();
        return count;
    };
    return sameBonds(after, literal) && bondCount(after) > bondCount(before);
}

void complete(benchmark::State &state, int count)
{
    const Crystals::Crystal crystal = bondedCrystal(count);
    QList<MagresAtom> atoms = crystal.atoms;
    Magres::completeMolecules(atoms, crystal.lattice);
    Bench::require(isPlausible(crystal.atoms, atoms), "complete");

    for (auto _ : state) {
        state.PauseTiming();
        atoms = crystal.atoms;
        atoms.detach();
        state.ResumeTiming();
        Magres::completeMolecules(atoms, crystal.lattice);
        benchmark::DoNotOptimize(atoms.data());
    }
}

void completeLiteral(benchmark::State &state, int count)
{
    const Crystals::Crystal crystal = bondedCrystal(count);
    const std::vector<double> radii = Literal::covalentRadii(crystal.atoms);
    QList<MagresAtom> fast = crystal.atoms;
    Magres::completeMolecules(fast, crystal.lattice);
    QList<MagresAtom> literal;
    for (auto _ : state) {
        literal = crystal.atoms;
        Literal::completeMolecules(literal, crystal.lattice, radii);
    }
    Bench::require(samePositions(fast, literal) && sameBonds(fast, literal),
                   "complete: not the literal procedure's result");
}

} // namespace

void Bench::registerBonds()
{
    const auto add = [](const std::string &name, auto benchmarked, int count) {
        return benchmark::RegisterBenchmark(name.c_str(), benchmarked, count)->Unit(benchmark::kMillisecond);
    };
    for (int count : {1000, 5000}) {
        add("bonds/" + std::to_string(count), bonds, count);
        add("complete/" + std::to_string(count), complete, count);
    }
    add("complete/1000/literal", completeLiteral, 1000)->Iterations(1);
}
