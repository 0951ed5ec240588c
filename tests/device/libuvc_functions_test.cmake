# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

# What the device library wants from libuvc: these functions and no other, so that whatever stands
# in libuvc's place knows what it has to define.
#
#   cmake -D NM=<nm> -D LIBRARY=<libdevice.a> -P libuvc_functions_test.cmake

set(expected
  uvc_init uvc_exit uvc_get_device_list uvc_get_device_descriptor uvc_open uvc_close
  uvc_set_pantilt_rel uvc_set_pantilt_abs uvc_set_zoom_rel uvc_set_zoom_abs uvc_get_zoom_abs
  uvc_set_focus_rel uvc_get_focus_abs uvc_set_roll_abs uvc_get_gain
  uvc_set_white_balance_temperature_auto
  # Which units a camera has. Weak references: a library without them will do.
  uvc_get_camera_terminal uvc_get_processing_units
  # Give back what the others have handed out.
  uvc_free_device_descriptor uvc_free_device_list)
foreach(property brightness contrast saturation sharpness gamma white_balance_temperature
                 backlight_compensation power_line_frequency)
  list(APPEND expected uvc_get_${property} uvc_set_${property})
endforeach()

execute_process(COMMAND ${NM} --undefined-only --format=posix ${LIBRARY}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "uvc_get_camera_terminal w" OR NOT symbols MATCHES "uvc_get_processing_units w")
  message(FATAL_ERROR "a libuvc without the two look-ups would not do")
endif()
string(REGEX MATCHALL "\n_?uvc_[a-z_]+" wanted "\n${symbols}")
list(TRANSFORM wanted REPLACE "^\n_?" "")
list(REMOVE_DUPLICATES wanted)

set(unexpected ${wanted})
list(REMOVE_ITEM unexpected ${expected})
set(missing ${expected})
list(REMOVE_ITEM missing ${wanted})
if(unexpected OR missing)
  message(FATAL_ERROR "the device calls what it should not: [${unexpected}], "
    "and does not call: [${missing}]")
endif()
