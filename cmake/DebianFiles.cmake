# Run by cpack on the installed files: gives the texts the form and the names that Debian wants.
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}/share)

# Without name and time, so that the same text is the same file.
function(compress file)
  execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

compress(${share}/man/man1/krv.1)
# The text that the README points to stays beside the one that Debian's tools look for.
file(COPY_FILE ${share}/doc/krv/CHANGELOG.md ${share}/doc/krv/changelog)
compress(${share}/doc/krv/changelog)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${CPACK_KRV_CHANGELOG} ${share}/doc/krv/changelog.Debian @ONLY
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
compress(${share}/doc/krv/changelog.Debian)
