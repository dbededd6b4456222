// SPDX-License-Identifier: GPL-3.0-or-later

// Empty: the source beside the precompiled headers of all rooms.
