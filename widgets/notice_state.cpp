// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "widgets/notice_state.h"

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
int main_position_x = 0;
int main_position_y = 0;
int main2_position_x = 0;
int main2_position_y = 0;
int TopFlag = 0;
int Top2Flag = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
