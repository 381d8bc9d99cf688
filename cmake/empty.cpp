// SPDX-License-Identifier: GPL-3.0-or-later
// A library needs one source of its own; the objects of the rooms join it.
