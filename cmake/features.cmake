# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

# What is built, and why something is not; configure prints it at the end.
function(ptz_feature name condition built left_out)
  if(${condition})
    add_feature_info("${name}" TRUE "${built}")
  else()
    add_feature_info("${name}" FALSE "${left_out}")
  endif()
endfunction()

ptz_feature("X11 desktops" PTZ_X11 "keys, scale, keyboard focus"
  "switched off with PTZ_X11, or no X11 on this system")
ptz_feature("Virtual cameras" UMOCKDEV_FOUND "virtual-camera, virtual-camera-view"
  "pkg-config finds no umockdev-1.0 (Debian: libumockdev-dev); most tests are left out with them")
ptz_feature("Python" PTZ_PYTHON "the module virtual_camera and the tests written in Python"
  "there is no python3; the module virtual_camera and most tests are left out")
ptz_feature("Tests" BUILD_TESTING "run with ctest" "switched off with BUILD_TESTING")

# Below the prefix, for programs and modules that are installed.
set(PTZ_MODULE_DIR ${CMAKE_INSTALL_LIBDIR}/virtual-camera CACHE STRING
  "Where the modules are installed that virtual-camera loads into programs")
if(PTZ_PYTHON)
  # Debian's own answer is for /usr/local, where the prefix brings the "local".
  execute_process(OUTPUT_VARIABLE python_dir OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND ${PTZ_PYTHON} -c "import sysconfig
print(sysconfig.get_path('purelib', vars={'base': ''}).replace('/local/', '/', 1).lstrip('/'))")
endif()
set(PTZ_PYTHON_DIR "${python_dir}" CACHE STRING "Where the Python module is installed")
