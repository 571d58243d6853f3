// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

// What the tests are written with; precompiled, so that a test need not pick.
#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>
