# Brings the folder `app` up to what is `delivered`. Databases that are there already hold what a user
# entered, and stay.

file(GLOB_RECURSE files RELATIVE "${delivered}" "${delivered}/*")
foreach(file IN LISTS files)
    if(file MATCHES "\\.mdb$" AND EXISTS "${app}/${file}")
        continue()
    endif()
    get_filename_component(folder "${app}/${file}" DIRECTORY)
    file(COPY "${delivered}/${file}" DESTINATION "${folder}")
endforeach()
