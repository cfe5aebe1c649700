# Writes one stub per flat name of the import library IMPORTS, and the list of exports that leads to the stubs.
execute_process(COMMAND ${NM} ${IMPORTS} OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL " T _[A-Za-z0-9]+@[0-9]+" found "${symbols}")
list(SORT found)
list(REMOVE_DUPLICATES found)
list(LENGTH found count)
if(count LESS 500)
    message(FATAL_ERROR "only ${count} names found in ${IMPORTS}")
endif()

set(code "")
set(table "")
set(absent "")
set(pointers "")
set(texts "")
set(exports "EXPORTS\n")
set(index 0)
foreach(symbol IN LISTS found)
    string(REGEX MATCH "_([A-Za-z0-9]+)@([0-9]+)" ignored "${symbol}")
    set(name ${CMAKE_MATCH_1})
    set(bytes ${CMAKE_MATCH_2})
    string(APPEND exports "${name} = stub_${index}\n")
    # The one function that answers with memory must answer with none.
    set(answer "movl _AbsentStatus, %eax")
    if(name STREQUAL "GdipAlloc")
        set(answer "xorl %eax, %eax")
    endif()
    # A stub jumps through the table, whose entry leads to the binder until the name is bound. A name that the system
    # does not have ends in the third piece, which answers for it and takes its arguments off the stack.
    string(APPEND code "
    .globl _stub_${index}
_stub_${index}: jmp *_StubTargets + 4 * ${index}
bind_${index}: pushl $${index}
    jmp bind
absent_${index}: ${answer}
    ret $${bytes}
")
    string(APPEND table "    .long bind_${index}\n")
    string(APPEND absent "    .long absent_${index}\n")
    string(APPEND pointers "    .long text_${index}\n")
    string(APPEND texts "text_${index}: .asciz \"${name}\"\n")
    math(EXPR index "${index} + 1")
endforeach()

file(WRITE ${DEFINITIONS} "${exports}")
file(WRITE ${STUBS} "# Generated: every flat name as a jump.
    .text
# Above the return address and the arguments lies the index of a name; its place is taken by the address to go to.
bind:
    pushl %eax
    pushl %ecx
    pushl %edx
    pushl 12(%esp)
    call _BindName
    addl $4, %esp
    movl %eax, 12(%esp)
    popl %edx
    popl %ecx
    popl %eax
    ret
${code}
    .data
    .globl _StubTargets
_StubTargets:
${table}
    .section .rdata
    .globl _AbsentTargets
_AbsentTargets:
${absent}
    .globl _StubNames
_StubNames:
${pointers}
${texts}
")
