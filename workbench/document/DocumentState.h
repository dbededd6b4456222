// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Document.h"

#include <QStringList>

namespace Workbench {

class DataEngine;
class MainScene;
class PluginManager;

/// What lies on the pages and behind them, as plain values and back.
namespace DocumentState {

/// What only undo steps still hold is left out. `plugins` may be null.
Document capture(const MainScene &scene, const DataEngine &data, const PluginManager *plugins);

/// Replaces everything on the pages and the custom data; the undo steps are forgotten. Tables whose plug-in is not
/// loaded become items that keep their contents and show none; returns what to tell the user about them. What a plug-in
/// throws passes through, with everything as before.
QStringList restore(const Document &document, MainScene &scene, DataEngine &data, const PluginManager *plugins);

} // namespace DocumentState

} // namespace Workbench
