; The start of UNPACK.EXE, its EXE header, and the calls to DOS and to the XMS driver. The program is laid out like a .COM file:
; code, data and stack are in one segment, which begins with the PSP. It ends with exit code 11 and one line on a CPU below the
; 386, so nothing before CpuIsNew may need more than an 8086. Main gives the exit code otherwise.

extern Main, stackTop, bssStart, bssDoubleWords, moreParagraphs, lastPageBytes, filePages

; What a call takes and gives, as Calls.h has it.
struc Registers
    .Ax: resw 1
    .Bx: resw 1
    .Cx: resw 1
    .Dx: resw 1
    .Si: resw 1
    .Ds: resw 1
    .Carry: resb 1
endstruc

section .header progbits alloc noexec nowrite align=1
    db 'MZ'
    dw lastPageBytes
    dw filePages
    dw 0                        ; relocations
    dw 2                        ; paragraphs of this header
    dw moreParagraphs           ; wanted after the image, at least and at most: the rest is allocated when it is needed
    dw moreParagraphs
    dw -10h                     ; SS, counted from the end of the PSP
    dw stackTop
    dw 0                        ; checksum
    dw 100h
    dw -10h                     ; CS
    dw 1Ch                      ; where relocations would be
    dw 0
    dd 0

section .start progbits alloc exec nowrite align=1
bits 16
cpu 8086
global Start
Start:
    ; Of the highest bits of the flags an 8086 has all set, a 286 all clear in real mode; on a 386 some can be changed.
    cld
    pushf
    pop ax
    and ax, 0FFFh
    push ax
    popf
    pushf
    pop ax
    and ax, 0F000h
    cmp ax, 0F000h
    je CpuIsOld
    pushf
    pop ax
    or ax, 7000h
    push ax
    popf
    pushf
    pop ax
    and ax, 7000h
    jnz CpuIsNew
CpuIsOld:
    mov dx, oldCpuLine
    mov cx, oldCpuLineEnd - oldCpuLine
    mov bx, 2
    mov ah, 40h
    int 21h
    mov ax, 4C0Bh
    int 21h
oldCpuLine: db 'UNPACK needs a 386 or a newer CPU', 13, 10
oldCpuLineEnd:

cpu 386
CpuIsNew:
    movzx esp, sp
    xor eax, eax
    mov edi, bssStart
    mov ecx, bssDoubleWords
    a32 rep stosd
    call dword Main
    mov ah, 4Ch
    int 21h

; A call of either kind: EAX points at its Registers. Drivers have been seen to destroy the upper halves of registers, so all are
; kept. SS is the segment of the Registers.
%macro CALL_WITH_REGISTERS 1+
    pushad
    push ds
    push es
    push fs
    push gs
    push ax
    mov bx, ax
    mov ax, [bx + Registers.Ax]
    mov cx, [bx + Registers.Cx]
    mov dx, [bx + Registers.Dx]
    mov si, [bx + Registers.Si]
    push word [bx + Registers.Ds]
    mov bx, [bx + Registers.Bx]
    pop ds
    %1
    mov bp, sp
    mov bp, [bp]
    mov [bp + Registers.Ax], ax
    mov [bp + Registers.Cx], cx
    mov [bp + Registers.Dx], dx
    setc [bp + Registers.Carry]
    pop ax
    pop gs
    pop fs
    pop es
    pop ds
    popad
    cld
    o32 ret
%endmacro

global CallDos
CallDos:
    CALL_WITH_REGISTERS int 21h

global CallXms
CallXms:
    CALL_WITH_REGISTERS call far [cs:xmsEntry]

; Asks for the XMS driver; AL is 1 when there is one.
global FindXms
FindXms:
    pushad
    push ds
    push es
    mov ax, 4300h
    int 2Fh
    cmp al, 80h
    jne .done
    mov ax, 4310h
    int 2Fh
    mov [cs:xmsEntry], bx
    mov [cs:xmsEntry + 2], es
.done:
    pop es
    pop ds
    popad
    cld
    cmp word [xmsEntry + 2], 0
    setne al
    o32 ret

; Ctrl-C: the program sees to it at its next step.
global OnBreak
OnBreak:
    mov byte [cs:isStopped], 1
    iret

; A disk that cannot be read or written: the call fails, and the program says so in its line. Nobody may be there to be asked.
global OnDiskError
OnDiskError:
    mov al, 3
    iret

section .bss nobits alloc noexec write align=4
xmsEntry: resw 2
global isStopped
isStopped: resb 1
