// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"

#include <QMap>
#include <QString>

/// Nuclear properties of the few nuclei that tests need, or others where a test sets them.
class TestNuclei : public Magres::NuclearProperties {
public:
    struct Nucleus {
        QString spin;
        double quadrupoleMoment = 0.0; // fm^2
        double abundance = 0.0; // percent
    };
    QMap<QByteArray, Nucleus> nuclei{
        {"1H", {QStringLiteral("1/2"), 0.0, 99.985}},    {"2H", {QStringLiteral("1"), 0.286, 0.015}},
        {"13C", {QStringLiteral("1/2"), 0.0, 1.11}},     {"14N", {QStringLiteral("1"), 2.044, 99.634}},
        {"15N", {QStringLiteral("1/2"), 0.0, 0.366}},    {"17O", {QStringLiteral("5/2"), -2.558, 0.038}},
        {"27Al", {QStringLiteral("5/2"), 14.66, 100.0}}, {"63Cu", {QStringLiteral("3/2"), -22.0, 69.17}},
        {"65Cu", {QStringLiteral("3/2"), -20.4, 30.83}}, {"35Cl", {QStringLiteral("3/2"), -8.165, 75.77}},
        {"37Cl", {QStringLiteral("3/2"), -6.435, 24.23}}};

    QString spin(const QByteArray &nucleus) const override { return nuclei.value(nucleus).spin; }
    double quadrupoleMoment(const QByteArray &nucleus) const override { return nuclei.value(nucleus).quadrupoleMoment; }
    double naturalAbundance(const QByteArray &nucleus) const override { return nuclei.value(nucleus).abundance; }
};
