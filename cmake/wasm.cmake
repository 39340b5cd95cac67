# Builds for WebAssembly: Clang with the C library and the C++ library that Debian has for it.
# There is no system below, and so no threads, no files and no HTTP of the library's own.

set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
set(CMAKE_C_COMPILER clang-16)
set(CMAKE_CXX_COMPILER clang++-16)
set(CMAKE_AR llvm-ar-16)
set(CMAKE_RANLIB llvm-ranlib-16)
set(CMAKE_C_COMPILER_TARGET wasm32-wasi)
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)
# A program without `main` does not link without more words.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(CMAKE_CXX_FLAGS_INIT "-isystem ${CMAKE_CURRENT_LIST_DIR}/../bindings/js/wasm/without-threads \
-fwasm-exceptions -mbulk-memory -mnontrapping-fptoint -msign-ext")
set(CMAKE_C_FLAGS_INIT "-mbulk-memory -mnontrapping-fptoint -msign-ext")

# Headers of this machine are not those of another; fast_float alone is all headers.
if(EXISTS /usr/include/fast_float)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
  file(CREATE_LINK /usr/include/fast_float ${CMAKE_BINARY_DIR}/headers/fast_float SYMBOLIC)
  set(TERN_FAST_FLOAT_INCLUDE ${CMAKE_BINARY_DIR}/headers CACHE PATH "")
endif()
