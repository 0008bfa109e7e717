# One target carries what every target of the tree is compiled with.
add_library(shablonist_options INTERFACE)
target_include_directories(shablonist_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(
  shablonist_options INTERFACE QT_DEPRECATED_WARNINGS QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER
                               $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
target_compile_options(
  shablonist_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wold-style-cast
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wcast-align
            -Wunused
            -Wformat=2
            -Wimplicit-fallthrough)
if(SHABLONIST_WERROR)
  target_compile_options(shablonist_options INTERFACE -Werror)
endif()
if(SHABLONIST_SANITIZE)
  target_compile_options(shablonist_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                      -fno-omit-frame-pointer)
  target_link_options(shablonist_options INTERFACE -fsanitize=address,undefined)
endif()
if(SHABLONIST_THREAD_SANITIZER)
  if(SHABLONIST_SANITIZE)
    message(FATAL_ERROR "SHABLONIST_THREAD_SANITIZER and SHABLONIST_SANITIZE exclude each other")
  endif()
  target_compile_options(shablonist_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(shablonist_options INTERFACE -fsanitize=thread)
endif()
