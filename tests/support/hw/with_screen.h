/* SPDX-License-Identifier: MIT */
/* Fixtures of the overlay library's tests: the FPGA recorded, with a screen and without. */
#ifndef HALDEND_TESTS_WITH_SCREEN_H
#define HALDEND_TESTS_WITH_SCREEN_H

#include "fpga/cursor.h"
#include "fpga/screen.h"
#include "tests/support/hw/fpga_recorder.h"

#include <gtest/gtest.h>

class without_screen : public testing::Test
{
protected:
    void SetUp() override
    {
        current_screen = nullptr;
        fpga_recorder_reset();
    }
    void TearDown() override { current_screen = nullptr; }
};

class with_screen : public without_screen
{
protected:
    void SetUp() override
    {
        without_screen::SetUp();
        init_screen(&record, nullptr);
        fpga_recorded().clear();
    }

    screen record = {};
};

#endif
