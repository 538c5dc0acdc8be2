" Story files: suspects.ini and the .txt files beside it.
autocmd BufNewFile,BufRead suspects.ini set filetype=orane
autocmd BufNewFile,BufRead *.txt if filereadable(expand('<afile>:p:h') . '/suspects.ini') | set filetype=orane | endif
