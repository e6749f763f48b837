# For a library of which nearly every file reads the headers of Windows: they are compiled once.
cmake_language(DEFER CALL target_precompile_headers ${QUILLON_PRECOMPILED} PRIVATE <winsock2.h> <windows.h>)
