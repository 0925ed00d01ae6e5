/* SPDX-License-Identifier: MIT */
/* What carries the precompiled headers of the tests; it has nothing of its own. */
