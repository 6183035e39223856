# Refuses at once what the library is not made for: everything in it takes 64-bit little-endian x86 for granted.

function(pxlcc_refuse what)
    message(FATAL_ERROR "pxlCC is for x86-64 only: ${what}")
endfunction()

if(CMAKE_CXX_BYTE_ORDER STREQUAL BIG_ENDIAN)
    pxlcc_refuse("this compiler's code is big-endian")
elseif(CMAKE_SIZEOF_VOID_P LESS 8)
    pxlcc_refuse("this compiler's code is 32-bit")
endif()
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_QUIET ON)
check_cxx_source_compiles("#ifndef __x86_64__\n#error\n#endif\nint main() {}" PXLCC_IS_X86_64)
unset(CMAKE_REQUIRED_QUIET)
if(NOT PXLCC_IS_X86_64)
    pxlcc_refuse("this compiler's code is for another processor")
endif()

if((CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 12) OR
   (CMAKE_CXX_COMPILER_ID STREQUAL Clang AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14))
    message(FATAL_ERROR "pxlCC needs GCC 12, Clang 14 or a later one, not ${CMAKE_CXX_COMPILER_ID} "
                        "${CMAKE_CXX_COMPILER_VERSION}")
endif()
