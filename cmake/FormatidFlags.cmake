# The flags that every target of the project is built with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(formatid_flags INTERFACE)
target_compile_options(
  formatid_flags
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wsign-conversion
            -Wshadow
            -Wcast-qual
            -Wformat=2
            -Wundef
            $<$<BOOL:${FORMATID_WARNINGS_AS_ERRORS}>:-Werror>
            $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
            $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>)
target_include_directories(formatid_flags INTERFACE ${PROJECT_SOURCE_DIR}/include)
# The signature table is encoded at compile time, in 2 to 5 million steps; clang's limit is 1 million.
target_compile_options(
  formatid_flags
  INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,Clang,AppleClang>:-fconstexpr-steps=20000000>)

# Hardening, as Debian builds its packages. A read behind the end of a span, a view or an array ends
# the process in every build; the rest would hide faults from the sanitizers or keep them from
# working. tests/hardening reads the result from the files.
add_compile_definitions(_GLIBCXX_ASSERTIONS)
if(NOT FORMATID_SANITIZE)
  include(CheckCXXCompilerFlag)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection)
  # Fortified functions need the optimiser, which knows how large an object is.
  add_compile_options($<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>
                      $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  foreach(branch_protection IN ITEMS -fcf-protection=full -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER "formatid_has${branch_protection}" has)
    check_cxx_compiler_flag(${branch_protection} ${has})
    if(${has})
      add_compile_options(${branch_protection})
    endif()
  endforeach()
  # A variable that nobody set is zero, and in debug builds 0xFE, so that nothing relies on the zero.
  check_cxx_compiler_flag(-ftrivial-auto-var-init=zero formatid_has_trivial_init)
  if(formatid_has_trivial_init)
    add_compile_options(-ftrivial-auto-var-init=$<IF:$<CONFIG:Debug>,pattern,zero>)
  endif()
endif()

if(FORMATID_LIBFUZZER)
  # Coverage of everything; the main of libFuzzer goes to the fuzz targets alone.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(FORMATID_SANITIZE)
  add_compile_options(-fsanitize=${FORMATID_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${FORMATID_SANITIZE})
endif()

# How the library and the command are linked. Measured per start of the command: a dynamic libstdc++
# costs 0.5 ms of CPU, dropping unused sections saves 0.03 ms and nearly half of the size, and binding
# at once costs nothing that shows, so that all relocations may be read-only. Of the C++ runtime each
# side may hold its own, but for the unwinder: an exception of a host's callback is thrown by the
# host's and caught by the library's, which works where both walk the stack with the shared libgcc_s.
set(formatid_link_options
    -Wl,-O1
    -Wl,--as-needed
    -Wl,--gc-sections
    -Wl,-z,relro
    -Wl,-z,now
    -Wl,-z,noexecstack)
set(formatid_module_link_options ${formatid_link_options})
if(NOT FORMATID_SANITIZE)
  # The sanitizers need the shared runtime, whose functions they replace.
  list(APPEND formatid_link_options -static-libstdc++)
endif()

if(CMAKE_INTERPROCEDURAL_OPTIMIZATION)
  include(CheckIPOSupported)
  check_ipo_supported(RESULT formatid_ipo OUTPUT formatid_ipo_reason LANGUAGES CXX)
  if(NOT formatid_ipo)
    message(STATUS "No link-time optimisation with this compiler: ${formatid_ipo_reason}")
    set(CMAKE_INTERPROCEDURAL_OPTIMIZATION OFF)
  elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The library is small: one partition costs no time, and g++ needs no make to spread the work.
    add_link_options(-flto-partition=one)
  endif()
endif()
