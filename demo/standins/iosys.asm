; Stand-in for the IO.SYS of MS-DOS 7: checks that the boot sector loaded it and handed over to it as that system
; expects it, says so on the screen and on COM1, and halts. It is not an operating system and does not claim to be one.
; NAME is the file it stands for.

        cpu     8086
        bits    16
        org     0

kOwnSegment     equ     0070h
kBootSector     equ     7C00h
kHandedOver     equ     0Ch             ; bytes between SP and BP
kDiskTable      equ     0522h
kDiskVector     equ     1Eh * 4
kMarker         equ     4F49h
kCom1           equ     3F8h

        db      "MZ"
        times   200h - ($ - $$) db 0
        db      "BJ"                    ; jumped to as well: harmless as instructions
        cli
        cld
        mov     ax, cs
        mov     ds, ax
        call    checkHandOver
        mov     si, textStarted
        jnc     say
        mov     si, textWrong
say:
        mov     sp, kBootSector
        sti
        call    prepareSerial
        call    print
        mov     si, textHint
        call    print
stop:
        hlt
        jmp     stop

; Returns with the carry flag set when something is not as MS-DOS 7 needs it.
checkHandOver:
        mov     dx, sp
        mov     ax, cs
        cmp     ax, kOwnSegment
        jne     wrong
        mov     ax, ss
        test    ax, ax
        jnz     wrong
        cmp     bp, kBootSector
        jne     wrong
        cmp     dx, kBootSector - kHandedOver - 2       ; one return address is on the stack
        jne     wrong
        cmp     word [bp - 0Ch], kDiskVector            ; address of the vector of the disk table
        jne     wrong
        cmp     word [bp - 0Ah], 0
        jne     wrong
        mov     ax, [bp + 16h]                          ; first data sector, as the disk describes itself
        mov     cl, [bp + 10h]
        mov     ch, 0
        mul     cx
        add     ax, [bp + 0Eh]
        mov     bx, ax
        mov     ax, [bp + 11h]
        mov     cl, 4
        shr     ax, cl
        add     ax, bx
        cmp     ax, [bp - 4]
        jne     wrong
        cmp     word [bp - 2], 0
        jne     wrong
        cmp     di, 2                                   ; own first cluster
        jb      wrong
        cmp     di, 0FF0h
        jae     wrong
        cmp     word [bp + 1FEh], 0AA55h                ; the boot sector is still there
        jne     wrong
        mov     bx, [bp + 1EEh]                         ; messages for a loader's errors
        cmp     bx, kBootSector + 3Eh
        jb      wrong
        cmp     bx, kBootSector + 1EEh
        jae     wrong
        mov     bx, kDiskVector
        cmp     word [ss:bx], kDiskTable
        jne     wrong
        cmp     word [ss:bx + 2], 0
        jne     wrong
        mov     al, [bp + 18h]
        cmp     al, [ss:kDiskTable + 4]                 ; sectors per track
        jne     wrong
        cmp     word [bp - 8], kDiskTable               ; the old disk table is another one
        je      wrong
        cmp     word [marker], kMarker                  ; the fourth sector is loaded
        jne     wrong
        clc
        ret
wrong:
        stc
        ret

; COM1 at 9600 bits per second, 8 data bits, no parity, 1 stop bit, without interrupts.
prepareSerial:
        push    si
        mov     si, serialSetup
nextSetup:
        lodsw
        mov     dx, kCom1
        add     dl, al
        mov     al, ah
        out     dx, al
        cmp     si, serialSetupEnd
        jb      nextSetup
        pop     si
        ret

; Prints the text at SI up to a byte 0 on the screen and on COM1.
print:
        lodsb
        test    al, al
        jz      printed
        push    ax
        mov     ah, 0Eh
        mov     bx, 7
        int     10h
        pop     ax
        call    send
        jmp     print
printed:
        ret

; Sends AL; gives up when the line does not take it, so that a machine without COM1 does not wait for ever.
send:
        mov     bl, al
        mov     cx, 0FFFFh
        mov     dx, kCom1 + 5
waitForLine:
        in      al, dx
        test    al, 20h
        jnz     lineIsFree
        loop    waitForLine
lineIsFree:
        mov     dx, kCom1
        mov     al, bl
        out     dx, al
        ret

; Pairs of register and value.
serialSetup:
        db      1, 00h
        db      3, 80h
        db      0, 12
        db      1, 0
        db      3, 03h
        db      2, 00h
        db      4, 03h
serialSetupEnd:

textStarted:
        db      13, 10, NAME, " stand-in: started by the boot sector", 13, 10, 0
textWrong:
        db      13, 10, NAME, " stand-in: started, but not in the way that MS-DOS 7 needs", 13, 10, 0
textHint:
        db      "This is a demonstration disk without DOS. Make it again with your own DOS files.", 13, 10, 0

        times   600h - ($ - $$) db 0
marker: dw      kMarker
        times   800h - ($ - $$) db 0
