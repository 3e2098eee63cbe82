# Run by CPack on the finished Debian packages, which are made anew: without the scripts that CPack
# gives to each with a shared object anywhere below lib, as these call ldconfig and ours are no
# libraries that others link; and readable by all, whatever the builder's umask.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(folder ${package}.contents)
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${folder} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${folder}/DEBIAN/postinst ${folder}/DEBIAN/postrm)
  execute_process(COMMAND chmod -R u=rwX,go=rX ${folder} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(
    COMMAND dpkg-deb --root-owner-group -Zxz --build ${folder} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${folder})
endforeach()
