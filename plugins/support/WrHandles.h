// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

#include <QGraphicsView>
#include <QUndoStack>

// Host objects that plug-ins hold or hand on without calling them.

class WrMainView : public WrObject<QGraphicsView> {
public:
    using WrObject::WrObject;
};

class WrUndoStack : public WrObject<QUndoStack> {
public:
    using WrObject::WrObject;
};

class WrNMREntryProxy : public WrObject<QObject> {
public:
    using WrObject::WrObject;
};

class WrUtilsProxy : public WrObject<QObject> {
public:
    using WrObject::WrObject;
};

class WrNMRToolsManager : public WrObject<QObject> {
public:
    using WrObject::WrObject;
};
