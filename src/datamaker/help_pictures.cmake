# Makes the pictures of the help: the driver takes them on a copy of the application folder as
# `delivered`, from which they go into its help and into that of `app`.
#
#   cmake -D drive=DRIVER -D script=FILE -D delivered=DIR -D app=DIR -D stamp=FILE -D work=DIR
#         -P help_pictures.cmake
#
# `stamp` is as old as the sample portfolio: its day is the day that the pictures show.

file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}/pictures" "${work}/home/Documents" "${work}/home/Copies")
file(COPY "${delivered}/" DESTINATION "${work}/app")

# A screen of the pictures' size, and a look that does not follow the desktop of who builds.
file(WRITE "${work}/screen.json" [[{
    "synchronousWindowSystemEvents": true,
    "windowFrameMargins": false,
    "screens": [{"name": "screen", "x": 0, "y": 0, "width": 760, "height": 560,
                 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]
}]])
set(ENV{QT_QPA_PLATFORM} "offscreen:configfile=../screen.json")
foreach(variable QT_SCALE_FACTOR QT_SCREEN_SCALE_FACTORS QT_FONT_DPI QT_STYLE_OVERRIDE
                 QT_QPA_PLATFORMTHEME)
    unset(ENV{${variable}})
endforeach()
set(ENV{HOME} "${work}/home")
set(ENV{XDG_CONFIG_HOME} "${work}/home")
set(ENV{XDG_RUNTIME_DIR} "${work}/home")
file(CHMOD "${work}/home" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# The notice of a new version is shown when the number that is read differs.
file(READ "${work}/app/WebLinks.json" links)
string(REPLACE "{practice}/version.xml" "{practice}/version.xml?number=7.0.0" links "${links}")
file(WRITE "${work}/app/WebLinks.json" "${links}")

file(TIMESTAMP "${stamp}" today "%Y-%m-%d")
function(day result days)
    execute_process(COMMAND date "--date=${today} ${days} days" +%F OUTPUT_VARIABLE text
                    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(${result} "${text}" PARENT_SCOPE)
endfunction()
day(tomorrow 1)
day(halfYearAgo -182)
day(yearAgo -365)
configure_file("${script}" "${work}/pictures.drive" @ONLY)

execute_process(
    COMMAND "${drive}" --app ../app --settings ../settings.ini ../pictures.drive
    WORKING_DIRECTORY "${work}/pictures" TIMEOUT 300
    RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "The pictures of the help could not be made (${status}): ${script}, ${said}")
endif()

foreach(folder "${delivered}" "${app}")
    file(REMOVE_RECURSE "${folder}/help/pictures")
    file(COPY "${work}/pictures" DESTINATION "${folder}/help")
endforeach()
file(REMOVE_RECURSE "${work}")
