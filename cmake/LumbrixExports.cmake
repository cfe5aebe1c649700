# What the linkers need to know about exported names, made from the one list of them.
set(LUMBRIX_EXPORTS ${CMAKE_SOURCE_DIR}/imaging/exports/exports.txt)
set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${LUMBRIX_EXPORTS})

# Writes a file made of one line for each exported name: BEFORE the lines and BEHIND them stand as they are, and in LINE
# the words NAME and BYTES are replaced. With PUBLIC the names that are for our own program are left out.
function(lumbrix_write_exports file)
    cmake_parse_arguments(PARSE_ARGV 1 EXPORTS "PUBLIC" "BEFORE;LINE;BEHIND" "")
    file(STRINGS ${LUMBRIX_EXPORTS} rows REGEX "^[^#]")
    set(text "${EXPORTS_BEFORE}")
    foreach(row IN LISTS rows)
        if(NOT row MATCHES "^([A-Za-z_]+) ([0-9]+) (public|internal)$")
            message(FATAL_ERROR "${LUMBRIX_EXPORTS}: ${row}")
        endif()
        set(name ${CMAKE_MATCH_1})
        set(bytes ${CMAKE_MATCH_2})
        if(NOT EXPORTS_PUBLIC OR CMAKE_MATCH_3 STREQUAL public)
            string(REPLACE "NAME" "${name}" line "${EXPORTS_LINE}")
            string(REPLACE "BYTES" "${bytes}" line "${line}")
            string(APPEND text "${line}")
        endif()
    endforeach()
    file(CONFIGURE OUTPUT ${file} CONTENT "${text}${EXPORTS_BEHIND}" @ONLY)
endfunction()
