# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

# Writes the bytes of the file FROM as an array into the C++ file TO.
file(READ ${FROM} bytes HEX)
string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
file(WRITE ${TO} "extern const unsigned char scaledPicturesArray[];
const unsigned char scaledPicturesArray[] = { ${bytes} };
")
