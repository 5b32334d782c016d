# Warnings are errors in the project's own code.
function(bq2_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()
