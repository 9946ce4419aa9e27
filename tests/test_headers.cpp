// SPDX-License-Identifier: GPL-3.0-or-later
// Nothing of its own: the target exists for the headers that all tests share.
