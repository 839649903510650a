; ABSENT.EXE: takes the name of a DOS program or driver that a free DOS does not have, and says so when it is started.
;
;   SMARTDRV.EXE is not part of the DOS that this disk was built with.
;
; The name is the one under which it was started: a program's from its environment (DOS 3.0 or later, otherwise the line begins
; with "This program"), a driver's from its line of CONFIG.SYS. A program writes the line to the error output and ends with
; code 255, so that no batch file takes its work for done, nor, under the name of CHOICE, an answer for given: that is also
; CHOICE's code for an error. A driver shows it while CONFIG.SYS is read and takes no memory and no letter.
;
; One file serves for both, and under any extension: DOS goes by the "MZ" at its start, and takes what follows the header for a
; driver when CONFIG.SYS names it.
;
; 8086 instructions only.

        cpu     8086
        bits    16

kHeaderBytes    equ     32
kExitCode       equ     255
kStackBytes     equ     512
kInit           equ     0               ; the only request that a driver without units gets
kCommand        equ     2               ; offsets in a request
kStatus         equ     3
kUnits          equ     0Dh
kEnd            equ     0Eh
kLine           equ     12h
kDone           equ     100h
kUnknown        equ     8103h
kEnvironment    equ     2Ch             ; in a program's prefix: the segment of its environment

        org     -kHeaderBytes
        db      "MZ"
        dw      kFileBytes % 512
        dw      (kFileBytes + 511) / 512
        dw      0                       ; relocations
        dw      kHeaderBytes / 16
        dw      (kStackBytes + 15) / 16, (kStackBytes + 15) / 16
        dw      (kFileBytes - kHeaderBytes + 15) / 16, kStackBytes
        dw      0                       ; checksum
        dw      program, 0
        times   kHeaderBytes - ($ - $$) db 0

; The driver's header is the first of the image.
        dd      -1                      ; no further driver in this file
        dw      0                       ; a driver of drives
        dw      strategy
        dw      interrupt
        db      0, "ABSENT "            ; no drives yet

request dd      0

strategy:
        mov     [cs:request], bx
        mov     [cs:request + 2], es
        retf

interrupt:
        pushf
        push    ax
        push    bx
        push    cx
        push    dx
        push    si
        push    di
        push    ds
        push    es
        cld
        lds     bx, [cs:request]
        cmp     byte [bx + kCommand], kInit
        mov     word [bx + kStatus], kUnknown
        jne     interruptDone
        mov     word [bx + kStatus], kDone
        mov     byte [bx + kUnits], 0
        mov     word [bx + kEnd], 0     ; an end at the driver's own start: nothing is kept
        mov     [bx + kEnd + 2], cs
        lds     si, [bx + kLine]
        call    findName
        push    cs
        pop     es
nextLetter:
        jcxz    nameShown
        lodsb
        call    showLetter
        dec     cx
        jmp     nextLetter
nameShown:
        push    cs
        pop     ds
        mov     si, text
        mov     cx, textEnd - text
nextText:
        lodsb
        call    showLetter
        loop    nextText
interruptDone:
        pop     es
        pop     ds
        pop     di
        pop     si
        pop     dx
        pop     cx
        pop     bx
        pop     ax
        popf
        retf

showLetter:
        mov     dl, al
        mov     ah, 2
        int     21h
        ret

; From DOS: DS and ES at the program's prefix.
program:
        cld
        mov     ah, 30h                 ; version of DOS
        int     21h
        mov     es, [kEnvironment]
        push    cs
        pop     ds
        mov     si, unnamed
        mov     cx, unnamedEnd - unnamed
        cmp     al, 3
        jb      writeName
        ; The variables end with an empty one; a count of 1 and the path of the program follow.
        xor     di, di
        mov     cx, 8000h               ; bytes that an environment has at most
        xor     al, al
nextVariable:
        repne scasb
        jcxz    writeName               ; with no bytes
        scasb
        loopne  nextVariable
        jne     writeName
        cmp     word [es:di], 0         ; no path
        je      writeName
        lea     si, [di + 2]
        push    es
        pop     ds
        call    findName
writeName:
        mov     dx, si
        call    write
        push    cs
        pop     ds
        mov     dx, text
        mov     cx, textEnd - text
        call    write
        mov     ax, 4C00h + kExitCode
        int     21h

write:
        mov     bx, 2                   ; error output
        mov     ah, 40h
        int     21h
        ret

; DS:SI is at a path, which ends before a space or another character below it. Returns its last name in SI, the number of its
; letters in CX; changes AL and DI.
findName:
        mov     di, si
nextCharacter:
        lodsb
        cmp     al, " "
        jbe     pathDone
        cmp     al, "\"
        je      nameFollows
        cmp     al, ":"
        jne     nextCharacter
nameFollows:
        mov     di, si
        jmp     nextCharacter
pathDone:
        dec     si
        mov     cx, si
        sub     cx, di
        mov     si, di
        ret

unnamed:
        db      "This program"
unnamedEnd:
text:
        db      " is not part of the DOS that this disk was built with.", 13, 10
textEnd:
kFileBytes      equ     $ - $$
