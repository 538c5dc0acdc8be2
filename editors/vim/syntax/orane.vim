" The story language of Orane: scenes, the two writers, choices and their targets.
" A token counts anywhere in its line, as the game reads it.
if exists('b:current_syntax')
  finish
endif

syntax match oraneComment "^#.*$" contains=oraneAnnotation
syntax match oraneAnnotation "^# \(sets\|needs\):" contained nextgroup=oraneFacts
syntax match oraneFacts ".*$" contained
syntax match oraneWriter "ORANE\|NATHAN"
syntax match oraneChoice "\*.*$" contains=oraneChoiceMark
syntax match oraneChoiceMark "\*" contained
syntax match oraneArrow "->" nextgroup=oraneTarget skipwhite
syntax match oraneForward "FORWARD" nextgroup=oraneTarget skipwhite
syntax match oraneScene "SCENE" nextgroup=oraneSceneName skipwhite
syntax match oraneSceneName "\S\+" contained
syntax match oraneTarget "\S\+" contained

highlight default link oraneComment Comment
highlight default link oraneAnnotation PreProc
highlight default link oraneFacts Identifier
highlight default link oraneWriter Statement
highlight default link oraneScene Keyword
highlight default link oraneSceneName Function
highlight default link oraneForward Keyword
highlight default link oraneChoice String
highlight default link oraneChoiceMark Operator
highlight default link oraneArrow Operator
highlight default link oraneTarget Function

let b:current_syntax = 'orane'
