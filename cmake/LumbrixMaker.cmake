# Who made the program, as its About box tells: configuration of the build, of plain ASCII characters.
#   lumbrix_maker_line(VARIABLE DEFAULT MEANING) adds a cache variable, and VARIABLE_CAPTION, which shows it in a label.
# What differs from its default stands in LUMBRIX_OTHER_MAKER_LINES as definitions, for the tests to expect.
function(lumbrix_maker_line variable default meaning)
    set(${variable} "${default}" CACHE STRING "${meaning}, in the About box")
    if("${${variable}}" MATCHES "[^ -~]|[\"\\;]")
        message(FATAL_ERROR "${variable} must be of printable ASCII characters but quotes, backslashes and semicolons: ${${variable}}")
    endif()
    if(NOT "${${variable}}" STREQUAL "${default}")
        set(LUMBRIX_OTHER_MAKER_LINES "${LUMBRIX_OTHER_MAKER_LINES}#define ${variable} \"${${variable}}\"\n" PARENT_SCOPE)
    endif()
    # A single ampersand would underline the letter behind it.
    string(REPLACE "&" "&&" caption "${${variable}}")
    set(${variable}_CAPTION "${caption}" PARENT_SCOPE)
endfunction()

set(LUMBRIX_OTHER_MAKER_LINES "")
lumbrix_maker_line(LUMBRIX_MAKER_NAME "The Lumbrix project" "The maker's name")
lumbrix_maker_line(LUMBRIX_MAKER_STREET "1 Example Street" "The maker's street")
lumbrix_maker_line(LUMBRIX_MAKER_CITY "Example City" "The maker's city")
lumbrix_maker_line(LUMBRIX_MAKER_EMAIL "lumbrix@example.org" "The maker's e-mail address")
lumbrix_maker_line(LUMBRIX_MAKER_WEB "https://www.example.org/lumbrix" "The maker's web address")
