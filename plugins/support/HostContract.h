// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <array>
#include <cstddef>

/// One host method that plug-ins call: the host object that has it, its name, and the type names of its result and
/// arguments exactly as they are passed on. An empty result means none.
struct HostMethod {
    const char *object;
    const char *name;
    const char *result;
    std::array<const char *, 3> arguments{};

    constexpr std::size_t argumentCount() const
    {
        std::size_t n = 0;
        while (n < arguments.size() && arguments[n])
            ++n;
        return n;
    }
};

/// Every host method that the proxies call, in one place: the whole of what plug-ins ask of a host.
namespace HostContract {

inline constexpr HostMethod checkProductLicense{"mainWindow", "checkProductLicense", "bool", {"QString"}};
inline constexpr HostMethod dataEngine{"mainWindow", "dataEngine", "QObject*"};
inline constexpr HostMethod getNMRData{"mainWindow", "getNMRData", "QObject*"};
inline constexpr HostMethod nmrPlot{"mainWindow", "nmrPlot", "QObject*"};

inline constexpr HostMethod createMolItem{
    "mainScene", "createMolItem", "QGraphicsWidget*", {"const QRectF&", "const QVariantMap&", "const bool"}};
inline constexpr HostMethod createNMRItem{
    "mainScene", "createNMRItem", "QGraphicsWidget*", {"const QRectF&", "const QVariantMap&", "const bool"}};
inline constexpr HostMethod addCustomTableItem{
    "mainScene", "addCustomTableItem", "QGraphicsWidget*", {"QObject*", "bool"}};
inline constexpr HostMethod setCustomData{"mainScene", "setCustomData", "", {"QVariantMap", "QGraphicsWidget*"}};
inline constexpr HostMethod delCustomData{"mainScene", "delCustomData", "", {"QUuid", "QGraphicsWidget*"}};
inline constexpr HostMethod getEmptyRect{"mainScene", "getEmptyRect", "QRectF"};

inline constexpr HostMethod getDataMap{"dataEngine", "getDataMap", "QVariantMap", {"QUuid"}};

inline constexpr HostMethod spin{"nmrDataTables", "spin", "QString", {"QString"}};
inline constexpr HostMethod quadrupoleMoment{"nmrDataTables", "quadrupoleMoment", "double", {"QString"}};
inline constexpr HostMethod naturalAbundance{"nmrDataTables", "naturalAbundance", "double", {"QString"}};

inline constexpr HostMethod addPluginFilter{"fileFilters", "addPluginFilter", "", {"QObject*"}};

inline constexpr HostMethod itemNMRData{"nmrItem", "getNMRData", "QObject*"};

inline constexpr HostMethod insertSpectrum{"nmrData", "insertSpectrum", "", {"QUuid", "QVariantMap"}};
inline constexpr HostMethod entryOrigParams{"nmrData", "entryOrigParams", "QVariantHash", {"QUuid", "QString"}};
inline constexpr HostMethod entryPeakList{"nmrData", "entryPeakList", "QVariantMap", {"QUuid"}};
inline constexpr HostMethod xUnitsString{"nmrData", "xUnitsString", "QString"};
inline constexpr HostMethod yUnitsString{"nmrData", "yUnitsString", "QString"};

inline constexpr HostMethod fullReset{"nmrPlot", "fullReset", ""};

inline constexpr HostMethod molMap{"molItem", "molMap", "QVariantMap"};
inline constexpr HostMethod setMolMap{"molItem", "setMolMap", "", {"QVariantMap"}};

inline constexpr HostMethod linkObject{"tableItem", "linkObject", "", {"QObject*"}};
inline constexpr HostMethod sendMessage{"tableItem", "sendMessage", "", {"QVariant"}};
inline constexpr HostMethod colId{"tableItem", "colId", "int", {"qint8"}};
inline constexpr HostMethod typeCntxtMenu{"tableItem", "typeCntxtMenu", "", {"QMenu*"}};

inline constexpr HostMethod beginResetModel{"tableModel", "beginResetModel", ""};
inline constexpr HostMethod endResetModel{"tableModel", "endResetModel", ""};

inline constexpr const HostMethod *methods[] = {
    &checkProductLicense, &dataEngine,       &getNMRData,      &nmrPlot,       &createMolItem,   &createNMRItem,
    &addCustomTableItem,  &setCustomData,    &delCustomData,   &getEmptyRect,  &getDataMap,      &spin,
    &quadrupoleMoment,    &naturalAbundance, &addPluginFilter, &itemNMRData,   &insertSpectrum,  &entryOrigParams,
    &entryPeakList,       &xUnitsString,     &yUnitsString,    &fullReset,     &molMap,          &setMolMap,
    &linkObject,          &sendMessage,      &colId,           &typeCntxtMenu, &beginResetModel, &endResetModel};

} // namespace HostContract
