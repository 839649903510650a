; RUN LOG KB KEY PROGRAM [ARGUMENTS]: runs a program on DOS and writes to the file LOG what it prints, to the screen and as
; errors, each time and date ("time ttttdddd") and set of attributes ("attributes aaaa") that it gives to a file, and at last
; "exit nn" with its exit code; numbers are hexadecimal. KB is how much conventional memory is left to it, 0 for all. With C as
; KEY, Ctrl-C is pressed when it first writes to a file; with - no key is pressed.
cpu 386
org 100h
    mov sp, stackTop
    mov bx, (stackTop - $$ + 100h + 15) / 16
    mov ah, 4Ah
    int 21h

    ; The words of the command line, each ended by a zero; the rest is the program's.
    mov si, 81h
    call NextWord
    mov [logName], di
    call NextWord
    mov [kilobytes], di
    call NextWord
    mov al, [di]
    mov [key], al
    call NextWord
    mov [program], di
    ; What follows is the tail: its length in the byte before it, a CR after it.
    mov di, tail + 1
    mov cx, 0
.copy:
    lodsb
    mov [di], al
    inc di
    cmp al, 13
    je .copied
    inc cx
    jmp .copy
.copied:
    mov [tail], cl

    mov ah, 3Ch
    xor cx, cx
    mov dx, [logName]
    int 21h
    jc Fail
    mov bx, ax
    mov cx, 1
    mov ah, 46h
    int 21h
    mov cx, 2
    mov ah, 46h
    int 21h
    mov ah, 3Eh
    int 21h

    ; Allocates everything except KB and a little for the names of the blocks.
    mov si, [kilobytes]
    xor ax, ax
.digit:
    mov bl, [si]
    inc si
    sub bl, '0'
    jb .number
    imul ax, 10
    xor bh, bh
    add ax, bx
    jmp .digit
.number:
    shl ax, 6
    jz .leaveAll
    mov cx, ax
    mov bx, 0FFFFh
    mov ah, 48h
    int 21h
    sub bx, cx
    jb Fail
    dec bx
    mov ah, 48h
    int 21h
    jc Fail
.leaveAll:

    mov ax, 3521h
    int 21h
    mov [oldDos], bx
    mov [oldDos + 2], es
    mov dx, OnDos
    mov ax, 2521h
    int 21h

    push cs
    pop es
    mov word [block + 2], tail
    mov [block + 4], cs
    mov bx, block
    mov dx, [program]
    mov ax, 4B00h
    int 21h
    push cs
    pop ds
    jc Fail
    mov ah, 4Dh
    int 21h
    mov [code], al
    lds dx, [oldDos]
    mov ax, 2521h
    int 21h
    push cs
    pop ds
    mov si, exitText
    call Say
    mov al, [code]
    call SayByte
    mov si, lineEnd
    call Say
    mov ax, 4C00h
    int 21h
Fail:
    mov ax, 4CFFh
    int 21h

; Passes over spaces and the word after them; DI is its start, and a zero ends it.
NextWord:
    lodsb
    cmp al, ' '
    je NextWord
    lea di, [si - 1]
.letter:
    lodsb
    cmp al, ' '
    je .end
    cmp al, 13
    jne .letter
    dec si
    ; A program without arguments: the CR stays for the tail, one place later.
    mov byte [si], 0
    inc si
    mov byte [si], 13
    ret
.end:
    mov byte [si - 1], 0
    ret

; Handles the program's DOS calls.
OnDos:
    pushad
    push ds
    push cs
    pop ds
    cmp ax, 5701h
    je .time
    cmp ax, 4301h
    je .attributes
    cmp ah, 40h
    je .write
.pass:
    pop ds
    popad
    jmp far [cs:oldDos]
.time:
    mov si, timeText
    call Say
    mov ax, cx
    call SayWord
    mov ax, dx
    jmp .word
.attributes:
    mov si, attributesText
    call Say
    mov ax, cx
.word:
    call SayWord
    mov si, lineEnd
    call Say
    jmp .pass
.write:
    cmp bx, 4
    jbe .pass
    cmp byte [key], 'C'
    jne .pass
    mov byte [key], '-'
    int 23h
    jmp .pass

; Writes the text at SI, a word AX or a byte AL.
Say:
    pushad
    mov dx, si
    xor cx, cx
.count:
    lodsb
    inc cx
    test al, al
    jnz .count
    dec cx
    mov bx, 1
    mov ah, 40h
    pushf
    cmp word [oldDos + 2], 0
    je .plain
    call far [oldDos]
    popad
    ret
.plain:
    popf
    int 21h
    popad
    ret
SayWord:
    push ax
    mov al, ah
    call SayByte
    pop ax
SayByte:
    pushad
    mov bl, al
    shr al, 4
    call .digit
    mov al, bl
    and al, 15
    call .digit
    popad
    ret
.digit:
    add al, '0'
    cmp al, '9'
    jbe .say
    add al, 'A' - '9' - 1
.say:
    mov [digit], al
    mov si, digit
    call Say
    ret

timeText: db 'time ', 0
attributesText: db 'attributes ', 0
exitText: db 'exit ', 0
lineEnd: db 13, 10, 0
digit: db 0, 0
oldDos: dd 0
block: dw 0, 0, 0, 5Ch, 0, 6Ch, 0
code: db 0
key: db 0
logName: dw 0
kilobytes: dw 0
program: dw 0
tail: times 130 db 0
align 16
times 1024 db 0
stackTop:
