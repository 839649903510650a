; A stand-in for a DOS that loads VELRAM.SYS and for an XMS manager: passes the driver the requests that the test wrote into
; the image, and reports on port E9h what becomes of them. It only reports; the test decides.
;
; From the test, at kGiven: see `given`. The script after the driver is a list of actions:
;   1, 32 bytes           a request, which the driver gets      -> "R", the 32 bytes afterwards
;   2, word, word         fills a number of bytes of the buffer, a pattern that begins with a word
;   3, word               reports that many bytes of the buffer -> "D", the word, the bytes
;   4, byte               the XMS function that fails from now on, or 0
;   0                     the end                               -> "E"
; Other reports: "T" and a letter that was printed, "F" for memory that was given back, "U" and the number of a function of
; INT 21h that no driver may call, "X" for a register that the driver did not keep.

%include "loader.inc"

kBuffer         equ     4000h           ; segments: the buffer of the transfers,
kRequest        equ     3000h           ; the request,
kDriver         equ     2000h           ; the driver
kBlock          equ     110000h         ; where the extended memory that is allocated begins
kHandle         equ     1234h

        struc   given
.xms:           resw    1               ; 1 when there is an XMS manager
.free:          resw    1               ; KB that it has
.fails:         resb    1               ; the function that fails, or 0
.version:       resb    1               ; the major version of DOS
.arguments:     resb    58              ; the line of CONFIG.SYS after "DEVICE="
.driver:        resb    2000h
.script:
        endstruc

        cli
        mov     ax, cs
        mov     ds, ax
        mov     ss, ax
        mov     sp, 1000h
        xor     ax, ax
        mov     es, ax
        mov     word [es:21h * 4], int21
        mov     [es:21h * 4 + 2], cs
        mov     word [es:2Fh * 4], int2F
        mov     [es:2Fh * 4 + 2], cs
        sti
        mov     ax, kDriver
        mov     es, ax
        mov     si, kGiven + given.driver
        xor     di, di
        mov     cx, 2000h / 2
        rep movsw
        mov     ax, [es:6]              ; in the driver's header
        mov     [strategy], ax
        mov     ax, [es:8]
        mov     [interrupt], ax
        mov     si, kGiven + given.script

nextAction:
        lodsb
        cmp     al, 1
        je      doRequest
        cmp     al, 2
        je      doFill
        cmp     al, 3
        je      doDump
        cmp     al, 4
        je      doFail
        mov     al, "E"
        out     0E9h, al
        mov     al, 31h
        out     0F4h, al
stop:
        hlt
        jmp     stop

doFail:
        lodsb
        mov     [kGiven + given.fails], al
        jmp     nextAction

doFill:
        mov     ax, kBuffer
        mov     es, ax
        lodsw
        mov     cx, ax
        shr     cx, 1
        lodsw
        xor     di, di
nextFill:
        stosw
        add     ax, 9E37h
        loop    nextFill
        jmp     nextAction

doDump:
        mov     al, "D"
        out     0E9h, al
        lodsw
        mov     cx, ax
        call    reportWord
        push    ds
        push    si
        mov     ax, kBuffer
        mov     ds, ax
        xor     si, si
        mov     dx, 0E9h
        rep outsb
        pop     si
        pop     ds
        jmp     nextAction

doRequest:
        mov     ax, kRequest
        mov     es, ax
        xor     di, di
        mov     cx, 16
        rep movsw
        push    ds
        pusha
        xor     bx, bx
        call    far [strategy]
        mov     bx, 2222h               ; a driver must ignore these registers, and keep them
        mov     cx, 3333h
        mov     dx, 4444h
        mov     si, 5555h
        mov     di, 6666h
        mov     bp, 7777h
        push    word 8888h
        pop     es
        mov     ax, 9999h
        mov     [savedSp], sp
        call    far [interrupt]
        call    compareRegisters
        popa
        pop     ds
        jc      registersLost
reportRequest:
        mov     al, "R"
        out     0E9h, al
        push    ds
        push    si
        mov     ax, kRequest
        mov     ds, ax
        xor     si, si
        mov     cx, 32
        mov     dx, 0E9h
        rep outsb
        pop     si
        pop     ds
        jmp     nextAction
registersLost:
        mov     al, "X"
        out     0E9h, al
        jmp     reportRequest

; Returns with the carry flag set when a register has changed.
compareRegisters:
        cmp     ax, 9999h
        jne     .differ
        cmp     bx, 2222h
        jne     .differ
        cmp     cx, 3333h
        jne     .differ
        cmp     dx, 4444h
        jne     .differ
        cmp     si, 5555h
        jne     .differ
        cmp     di, 6666h
        jne     .differ
        cmp     bp, 7777h
        jne     .differ
        mov     ax, es
        cmp     ax, 8888h
        jne     .differ
        mov     ax, ds
        cmp     ax, kKernel
        jne     .differ
        mov     ax, sp
        add     ax, 2
        cmp     ax, [savedSp]
        jne     .differ
        clc
        ret
.differ:
        stc
        ret

reportWord:
        out     0E9h, al
        xchg    al, ah
        out     0E9h, al
        xchg    al, ah
        ret

int21:
        push    ax
        push    si
        cmp     ah, 30h
        je      .version
        cmp     ah, 9
        je      .print
        cmp     ah, 2
        je      .letter
        mov     al, "U"
        out     0E9h, al
        mov     al, ah
        out     0E9h, al
        jmp     .done
.letter:
        mov     al, "T"
        out     0E9h, al
        mov     al, dl
        out     0E9h, al
        jmp     .done
.print:
        mov     si, dx
.nextLetter:
        lodsb
        cmp     al, "$"
        je      .done
        push    ax
        mov     al, "T"
        out     0E9h, al
        pop     ax
        out     0E9h, al
        jmp     .nextLetter
.done:
        pop     si
        pop     ax
        iret
.version:
        pop     si
        pop     ax
        mov     al, [cs:kGiven + given.version]
        mov     ah, 0
        iret

int2F:
        cmp     word [cs:kGiven + given.xms], 1
        jne     .done
        cmp     ax, 4300h
        je      .present
        cmp     ax, 4310h
        jne     .done
        push    cs
        pop     es
        mov     bx, xmsEntry
.done:
        iret
.present:
        mov     al, 80h
        iret

xmsEntry:
        cmp     ah, [cs:kGiven + given.fails]
        je      xmsFails
        cmp     ah, 08h
        je      xmsFree
        cmp     ah, 09h
        je      xmsAllocate
        cmp     ah, 0Ah
        je      xmsRelease
        cmp     ah, 0Bh
        je      xmsMove
xmsFails:
        xor     ax, ax
        mov     bl, 80h                 ; not implemented
        retf

xmsFree:
        mov     ax, [cs:kGiven + given.free]
        mov     dx, ax
        mov     bl, 0
        retf

xmsAllocate:
        cmp     dx, [cs:kGiven + given.free]
        ja      xmsFails
        mov     [cs:allocated], dx
        mov     dx, kHandle
        mov     ax, 1
        retf

xmsRelease:
        cmp     dx, kHandle
        jne     xmsFails
        mov     al, "F"
        out     0E9h, al
        mov     ax, 1
        retf

; DS:SI: length, source, target. The firmware moves 32 KB at a time at most.
xmsMove:
        pushad
        push    ds
        push    es
        mov     edi, [si]
        mov     bx, [si + 4]
        mov     ecx, [si + 6]
        call    address
        jc      .fails
        mov     [cs:moveFrom], ecx
        mov     bx, [si + 10]
        mov     ecx, [si + 12]
        call    address
        jc      .fails
        mov     [cs:moveTo], ecx
        push    cs
        pop     ds
        push    cs
        pop     es
        test    edi, 1
        jnz     .fails
.next:
        mov     ecx, 8000h
        cmp     edi, ecx
        ja      .piece
        mov     ecx, edi
.piece:
        jecxz   .moved
        mov     eax, [moveFrom]
        mov     [gdt + 16 + 2], eax
        shr     eax, 24
        mov     [gdt + 16 + 7], al
        mov     byte [gdt + 16 + 5], 93h
        mov     eax, [moveTo]
        mov     [gdt + 24 + 2], eax
        shr     eax, 24
        mov     [gdt + 24 + 7], al
        mov     byte [gdt + 24 + 5], 93h
        add     [moveFrom], ecx
        add     [moveTo], ecx
        sub     edi, ecx
        shr     cx, 1
        mov     si, gdt
        mov     ah, 87h
        int     15h
        jnc     .next
.fails:
        pop     es
        pop     ds
        popad
        jmp     xmsFails
.moved:
        pop     es
        pop     ds
        popad
        mov     ax, 1
        retf

; Turns the handle BX and the offset ECX of a piece of EDI bytes into an address in ECX; with the carry flag set when it is
; outside the memory of the handle. EAX and EDX are lost.
address:
        test    bx, bx
        jz      .conventional
        cmp     bx, kHandle
        jne     .bad
        movzx   eax, word [cs:allocated]
        shl     eax, 10
        mov     edx, ecx
        add     edx, edi
        jc      .bad
        cmp     edx, eax
        ja      .bad
        add     ecx, kBlock
        clc
        ret
.conventional:
        mov     eax, ecx
        shr     eax, 16
        shl     eax, 4
        movzx   ecx, cx
        add     ecx, eax
        clc
        ret
.bad:
        stc
        ret

strategy:
        dw      0, kDriver
interrupt:
        dw      0, kDriver
savedSp dw      0
allocated dw    0
moveFrom dd      0
moveTo  dd      0
gdt:    times   16 db 0
        dw      0FFFFh
        times   6 db 0
        dw      0FFFFh
        times   6 db 0
        times   16 db 0

        times   kGiven - ($ - $$) db 0
