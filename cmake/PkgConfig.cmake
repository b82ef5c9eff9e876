# pkg-config files, for hosts built without CMake: quorvvalida.pc links the library as it was
# built (shared or static), quorvvalida-estatica.pc always the static archive. Their prefix is the
# one the tree is installed to (`cmake --install --prefix` included), written as a plain path so
# that pkg-config leaves the system's own directories out of the flags it gives.
file(RELATIVE_PATH quorvvalida_pc_libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH quorvvalida_pc_includedir ${CMAKE_INSTALL_PREFIX}
  ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(quorvvalida_pc_privadas "-lstdc++ -lm -pthread")
if(CMAKE_DL_LIBS)
  string(APPEND quorvvalida_pc_privadas " -l${CMAKE_DL_LIBS}")
endif()
set(quorvvalida_pc_arquivo
  "${CMAKE_STATIC_LIBRARY_PREFIX}quorvvalida${CMAKE_STATIC_LIBRARY_SUFFIX}")
if(TARGET quorvvalida_estatica)
  set(quorvvalida_pc_cflags "")
else()
  set(quorvvalida_pc_cflags " -DQUORVVALIDA_STATIC")
endif()

foreach(quorvvalida_pc quorvvalida quorvvalida-estatica)
  # The prefix is only known when the tree is installed: it stays a placeholder until then.
  set(QUORVVALIDA_PC_PREFIXO "@QUORVVALIDA_PC_PREFIXO@")
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${quorvvalida_pc}.pc.in
    ${PROJECT_BINARY_DIR}/pkgconfig/${quorvvalida_pc}.pc.in @ONLY)
  install(CODE "set(QUORVVALIDA_PC_PREFIXO \"\${CMAKE_INSTALL_PREFIX}\")
    configure_file(\"${PROJECT_BINARY_DIR}/pkgconfig/${quorvvalida_pc}.pc.in\"
      \"${PROJECT_BINARY_DIR}/pkgconfig/${quorvvalida_pc}.pc\" @ONLY)")
  install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${quorvvalida_pc}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
