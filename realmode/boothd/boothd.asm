; BOOTHD.COM: leaves DOS and starts the first hard disk, as the firmware does when no floppy is there.
;
; It reads the disk's first sector, has DOS write back what it still holds, gives the interrupts back to the firmware and jumps
; to the sector at 0000:7C00 with DL = 80h. When that cannot be, it says so in one line on the error output and DOS continues:
;
;   1  there is no hard disk, or it cannot be read
;   2  its first sector does not end with the mark of a sector that can be started, or has no code
;   3  the processor is in virtual mode, where no system can be started: EMM386.EXE or the like is loaded
;   4  this DOS does not say where the firmware's disk functions are
;
; What is given back, with the addresses that DOS keeps for a restart:
;   - Where DOS has the usual table of the firmware's addresses at 0070:0100 (interrupts 10h, 13h, 15h, 19h, 1Bh) and has taken
;     INT 19h, the address of this program is put into the table in the place of INT 19h, and INT 19h called: DOS then
;     gives back all that it has taken, of the hardware's interrupts, too, and comes here in the end.
;   - Else INT 13h only, from that table or from INT 2Fh, AH = 13h.
;   - A handler in the memory of DOS that names the one before it in the way of shared interrupts gives way to that.
;   - What then still leads into the memory of DOS gets the address that it has had in the firmware of every PC.
; Other resident programs end with DOS, whatever they have taken.
;
; 8086 instructions only, except for one after a test of the processor. Memory: the last 1 KB of what DOS gives the program is in
; use until the sector starts, and free from then on.

        cpu     8086
        bits    16
        org     100h

kMemoryEnd      equ     2               ; in the program's prefix: the segment after its memory
kDisk           equ     80h
kSectorBytes    equ     512
kStart          equ     7C00h
kStubBytes      equ     400h            ; the code from `stub` on, and the sector
kTableSegment   equ     0070h
kTable          equ     0100h           ; five entries: interrupt, address
kEntryBytes     equ     5
kRom            equ     0F000h

; How a handler begins that names the one before it, after the rule for shared interrupts of the hardware.
kLinkJump       equ     10EBh           ; a jump over the rest
kLinkMark       equ     424Bh           ; at 6; the address of the other handler is at 2
kMostLinks      equ     16

        cld
        call    isVirtual
        mov     dx, textVirtual
        mov     al, 3
        jc      complain
        call    readSector
        mov     dx, textNoDisk
        mov     al, 1
        jc      complain
        cmp     word [bx + kSectorBytes - 2], 0AA55h
        mov     dx, textNoStart
        mov     al, 2
        jne     complain
        cmp     word [bx], 0            ; no code, as a table of partitions alone has it
        je      complain
        call    findFirmware
        mov     dx, textNoFirmware
        mov     al, 4
        jc      complain
        mov     ah, 0Dh                 ; write back what DOS and a disk cache hold
        int     21h
        call    placeStub               ; ES: its segment
        cmp     byte [isDosToGiveBack], 0
        je      withoutDos
        cli
        mov     ax, kTableSegment
        mov     ds, ax
        mov     word [kTable + 3 * kEntryBytes + 1], 0
        mov     [kTable + 3 * kEntryBytes + 3], es
        int     19h
withoutDos:
        push    es
        xor     ax, ax
        push    ax
        retf

; Prints the text at DX up to "$" on the error output and ends with the code AL.
complain:
        push    ax
        mov     di, dx
        push    ds
        pop     es
        mov     al, "$"
        mov     cx, 0FFFFh
        repne scasb
        lea     cx, [di - 1]
        sub     cx, dx
        mov     bx, 2
        mov     ah, 40h
        int     21h
        pop     ax
        mov     ah, 4Ch
        int     21h

; Returns with the carry flag set in virtual mode.
isVirtual:
        pushf
        pop     ax
        and     ah, 0Fh
        push    ax
        popf
        pushf
        pop     ax
        and     ah, 0F0h
        cmp     ah, 0F0h                ; these bits are always set up to the 80186, which has no other mode
        je      isReal
        cpu     286
        smsw    ax
        cpu     8086
        shr     al, 1                   ; bit 0: protected mode, of which virtual mode is a part
        ret
isReal:
        clc
        ret

; Reads the first sector to BX, where it does not cross 64 KB, which not every disk controller can. Returns with the carry flag
; set when it cannot be read.
readSector:
        mov     ax, cs
        mov     cl, 4
        shl     ax, cl
        mov     bx, ax
        neg     bx
        add     ax, buffer + kSectorBytes - 1
        and     ax, -kSectorBytes
        add     bx, ax
        mov     [sectorAt], bx
        mov     di, 4                   ; the first read after the motor starts may fail
readAgain:
        mov     ax, 0201h
        mov     cx, 1
        mov     dx, kDisk
        int     13h
        jnc     wasRead
        mov     ah, 0                   ; reset the drive
        mov     dl, kDisk
        int     13h
        dec     di
        jnz     readAgain
        stc
wasRead:
        ret

; Sets what the stub needs: [memoryEnd], [firmware13], [firmware19], and [isDosToGiveBack]. Returns with the carry flag set when
; the firmware's disk functions are not to be found.
findFirmware:
        int     12h                     ; KB of memory below the firmware's own
        mov     cl, 6
        shl     ax, cl
        mov     [memoryEnd], ax
        xor     ax, ax
        mov     es, ax
        mov     di, 19h * 4
        call    isFirmware
        sbb     al, al
        mov     [isDosToGiveBack], al   ; for now: whether INT 19h is taken
        jnz     searchTable
        les     ax, [es:di]
        mov     [firmware19], ax
        mov     [firmware19 + 2], es
searchTable:
        mov     ax, kTableSegment
        mov     es, ax
        mov     di, kTable
        mov     si, interrupts
nextEntry:
        lodsb
        cmp     al, [es:di]
        jne     noTable
        inc     di
        call    isFirmware
        jc      noTable
        add     di, kEntryBytes - 1
        cmp     si, interruptsEnd
        jb      nextEntry

        mov     al, [isDosToGiveBack]
        mov     bx, [es:kTable + kEntryBytes + 1]
        mov     cx, [es:kTable + kEntryBytes + 3]
        les     dx, [es:kTable + 3 * kEntryBytes + 1]
        mov     [firmware19], dx
        mov     [firmware19 + 2], es
        jmp     short found13

noTable:
        mov     byte [isDosToGiveBack], 0
        call    askDos
        jnc     found13
        xor     ax, ax
        mov     es, ax
        mov     di, 13h * 4
        call    isFirmware
        jc      noFirmware
        les     bx, [es:di]
        mov     cx, es
found13:
        mov     [firmware13], bx
        mov     [firmware13 + 2], cx
        clc
noFirmware:
        ret

; Asks DOS for the addresses of INT 13h that it uses and that it gives back; the call sets both, so the second one sets them as
; they were. Returns in CX:BX one that is the firmware's, or the carry flag set.
askDos:
        push    ds
        xor     ax, ax
        mov     ds, ax
        les     bx, [13h * 4]
        lds     dx, [13h * 4]
        cli
        mov     ah, 13h
        int     2Fh
        mov     [cs:used13], dx
        mov     [cs:used13 + 2], ds
        mov     [cs:given13], bx
        mov     [cs:given13 + 2], es
        mov     ah, 13h
        int     2Fh
        sti
        pop     ds
        push    ds
        pop     es
        mov     di, given13
        call    isFirmware
        jnc     asked
        mov     di, used13
        call    isFirmware
asked:
        mov     bx, [di]
        mov     cx, [di + 2]
        ret

; Copies the stub and the sector to the end of the program's memory; returns its segment in ES.
placeStub:
        mov     ax, [kMemoryEnd]
        sub     ax, kStubBytes / 16
        mov     es, ax
        xor     di, di
        mov     si, stub
        mov     cx, stubEnd - stub
        rep movsb
        mov     di, kStubBytes - kSectorBytes
        mov     si, [sectorAt]
        mov     cx, kSectorBytes / 2
        rep movsw
        ret

; From here on also at the end of memory: every address is taken relative to `stub`.
stub:
        cli
        cld
        xor     ax, ax
        mov     ss, ax
        mov     sp, kStart
        mov     es, ax
        push    cs
        pop     ds
        mov     si, firmware13 - stub
        mov     di, 13h * 4
        movsw
        movsw
        mov     di, 19h * 4
        movsw
        movsw
        xor     di, di
nextInterrupt:
        mov     bp, kMostLinks
nextLink:
        mov     cx, [memoryEnd - stub]
        call    isFirmwareBelow
        jnc     lastLink
        lds     bx, [es:di]
        cmp     word [bx], kLinkJump
        jne     lastLink
        cmp     word [bx + 6], kLinkMark
        jne     lastLink
        mov     ax, [bx + 2]
        mov     dx, [bx + 4]
        push    cs
        pop     ds
        mov     [es:di], ax
        mov     [es:di + 2], dx
        dec     bp
        jnz     nextLink
lastLink:
        push    cs
        pop     ds
        add     di, 4
        cmp     di, 80h * 4
        jb      nextInterrupt

        mov     si, defaults - stub
nextDefault:
        lodsb
        mov     ah, 0
        mov     di, ax
        add     di, di
        add     di, di
        lodsw
        mov     bx, ax
        mov     cx, [memoryEnd - stub]
        call    isFirmwareBelow
        jnc     isGivenBack
        mov     ax, kRom
        mov     ds, ax
        mov     al, [bx]
        push    cs
        pop     ds
        inc     al
        cmp     al, 1                   ; 0 or FFh: there is no such place in this firmware
        jbe     isGivenBack
        mov     [es:di], bx
        mov     word [es:di + 2], kRom
isGivenBack:
        cmp     si, defaultsEnd - stub
        jb      nextDefault

        mov     si, kStubBytes - kSectorBytes
        mov     di, kStart
        mov     cx, kSectorBytes / 2
        rep movsw
        mov     ds, cx
        sti
        mov     ah, 0                   ; reset the disk, now without DOS
        mov     dl, kDisk
        int     13h
        xor     ax, ax
        mov     es, ax
        xor     bx, bx
        xor     si, si
        xor     di, di
        mov     dx, kDisk
        jmp     0:kStart

; Returns with the carry flag set when the address at ES:DI leads into the memory of DOS, which ends at segment [memoryEnd] and
; continues above 1 MB; in the second form at segment CX. CX and DX are lost.
isFirmware:
        mov     cx, [memoryEnd]
isFirmwareBelow:
        push    ax
        mov     ax, cx
        mov     dx, [es:di]
        mov     cl, 4
        shr     dx, cl
        add     dx, [es:di + 2]
        jc      isAsked
        cmp     dx, ax
isAsked:
        pop     ax
        ret

; Interrupts with the places of their functions, in segment F000h, that programs have relied on since the first PC; 1Eh is the
; diskette parameter table.
defaults:
%macro place 2
        db      %1
        dw      %2
%endmacro
        place   05h, 0FF54h
        place   08h, 0FEA5h
        place   09h, 0E987h
        place   0Eh, 0EF57h
        place   11h, 0F84Dh
        place   12h, 0F841h
        place   14h, 0E739h
        place   15h, 0F859h
        place   16h, 0E82Eh
        place   17h, 0EFD2h
        place   1Ah, 0FE6Eh
        place   1Bh, 0FF53h
        place   1Ch, 0FF53h
        place   1Eh, 0EFC7h
defaultsEnd:
firmware13      dd      0
firmware19      dw      0E6F2h, kRom
memoryEnd       dw      0
stubEnd:
%if stubEnd - stub > kStubBytes - kSectorBytes
%error "the code of the stub is too long"
%endif

isDosToGiveBack db      0
sectorAt        dw      0
used13          dd      0
given13         dd      0
interrupts:
        db      10h, 13h, 15h, 19h, 1Bh
interruptsEnd:
textNoDisk:
        db      "BOOTHD: no hard disk can be read", 13, 10, "$"
textNoStart:
        db      "BOOTHD: nothing can be started from the hard disk", 13, 10, "$"
textVirtual:
        db      "BOOTHD: not with EMM386 or the like in memory: take the disk out and restart", 13, 10, "$"
textNoFirmware:
        db      "BOOTHD: not under this DOS: take the disk out and restart", 13, 10, "$"

        section .bss
buffer: resb    2 * kSectorBytes
