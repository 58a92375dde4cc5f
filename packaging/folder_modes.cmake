# Folders of the package are everybody's to enter, whatever the umask of whoever makes it.
file(CHMOD_RECURSE "${CPACK_TEMPORARY_DIRECTORY}"
     DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                           WORLD_EXECUTE)
