; IO.SYS for a disk with a free DOS. The boot sector takes this file for the IO.SYS of MS-DOS 7 and starts it; it loads
; KERNEL.SYS from the root of the same disk and starts that in the way of the FreeDOS boot sectors: the whole file at
; 0060:0000, BL and DL the drive, SS:BP at the description of the disk.
;
; The disk is FAT12 with 512 bytes a sector; all its numbers are taken from the description at its start. KERNEL.SYS may lie
; in pieces and have up to kMostSectors sectors (156 KB). What goes wrong is one line, and a key starts the machine again:
; no KERNEL.SYS, a file with less than its directory entry says, one that is too large, a sector that cannot be read.
;
; 8086 instructions only. Memory:
;   0060:0000  KERNEL.SYS, in the place where this file was loaded
;   1FE0:7C00  the boot sector's copy, as the FreeDOS boot sectors have theirs; the stack grows down from here
;   1FE0:7E00  this file's copy
;   1FE0:8600  one sector of the root directory, later the first copy of the FAT

        cpu     8086
        bits    16
        org     7E00h                   ; the place of the copy; the first lines run elsewhere

kFileSectors    equ     4               ; what the boot sector loads
kEntry          equ     200h            ; where it jumps to
kHome           equ     1FE0h
kDisk           equ     7C00h
kBuffer         equ     7E00h + kFileSectors * 512
kBufferSegment  equ     kHome + kBuffer / 16
kMostFatSectors equ     12              ; more than a FAT12 can need
kKernel         equ     0060h
kParagraphs     equ     512 / 16        ; of a sector
kStackRoom      equ     400h            ; bytes that KERNEL.SYS stays away from the stack's beginning
kMostSectors    equ     (kHome * 16 + kDisk - kStackRoom - kKernel * 16) / 512
kDiskVector     equ     1Eh * 4

%define SectorsPerCluster       byte [bp + 0Dh]
%define ReservedSectors         word [bp + 0Eh]
%define RootEntries             word [bp + 11h]
%define SectorsPerFat           word [bp + 16h]
%define SectorsPerTrack         word [bp + 18h]
%define Heads                   word [bp + 1Ah]
%define Drive                   byte [bp + 24h]

        db      "MZ"                    ; the two marks of an IO.SYS of MS-DOS 7
        times   kEntry - ($ - $$) db 0
        db      "BJ"                    ; inc dx, dec dx

; From the boot sector: SS:BP at itself, below that the first data sector and the firmware's disk table.
        cli
        cld
        mov     ax, kHome
        mov     es, ax
        push    cs
        pop     ds
        xor     si, si
        mov     di, $$
        mov     cx, kFileSectors * 512 / 2
        rep movsw
        push    ss
        pop     ds
        mov     si, bp
        mov     di, kDisk
        mov     cx, 512 / 2
        rep movsw
        lea     si, [bp - 8]
        mov     di, diskTable
        mov     cx, 4
        rep movsw
        mov     ss, ax
        mov     bp, kDisk
        mov     sp, bp
        sti
        jmp     kHome:atHome

atHome:
        mov     ds, ax
        mov     ax, [dataSector]
        mov     dx, RootEntries
        mov     cl, 4                   ; 16 entries per sector
        shr     dx, cl
        sub     ax, dx
nextRootSector:
        call    readToBuffer
        mov     di, kBuffer
nextEntry:
        cmp     byte [di], 0            ; the end of the directory
        je      failMissing
        test    byte [di + 11], 18h     ; a label, a folder or a part of a long name
        jnz     skipEntry
        push    di
        push    ds
        pop     es
        mov     si, kernelName
        mov     cx, 11
        repe cmpsb
        pop     di
        je      found
skipEntry:
        add     di, 32
        cmp     di, kBuffer + 512
        jb      nextEntry
        cmp     ax, [dataSector]
        jb      nextRootSector
failMissing:
        mov     si, textMissing
        jmp     fail
failDamaged:
        mov     si, textDamaged
        jmp     fail
failLarge:
        mov     si, textLarge
        jmp     fail

; The number of sectors of the file: 128 for each 64 KB, and what its low word makes, rounded up.
found:
        mov     ax, [di + 28]
        mov     dx, [di + 30]
        cmp     dx, 3
        jae     failLarge
        mov     bx, ax
        mov     cl, 9
        shr     ax, cl
        mov     cl, 7
        shl     dx, cl
        add     ax, dx
        test    bx, 511
        jz      wholeSectors
        inc     ax
wholeSectors:
        test    ax, ax
        jz      failDamaged
        cmp     ax, kMostSectors
        ja      failLarge
        mov     [sectorsLeft], ax

        push    word [di + 26]          ; the first cluster
        mov     cx, SectorsPerFat
        cmp     cx, kMostFatSectors
        ja      failDamaged
        mov     ax, kBufferSegment
        mov     es, ax
        mov     ax, ReservedSectors
        call    readSectors
        mov     ax, kKernel
        mov     es, ax
        pop     di

; Clusters that follow one another are read in one go. DI: the first of them, BX: the last one so far, DX: their sectors.
nextRun:
        mov     bx, di
        xor     dx, dx
nextCluster:
        lea     ax, [bx - 2]
        cmp     ax, 0FF0h - 2           ; the end of the chain, or no cluster at all
        jae     failDamaged
        mov     al, SectorsPerCluster
        mov     ah, 0
        add     dx, ax
        mov     si, bx                  ; 1.5 bytes for each cluster
        add     si, si
        add     si, bx
        shr     si, 1
        mov     ax, [si + kBuffer]
        jnc     evenCluster
        mov     cl, 4
        shr     ax, cl
evenCluster:
        and     ah, 0Fh
        cmp     dx, [sectorsLeft]
        jae     lastRun
        inc     bx
        cmp     ax, bx
        je      nextCluster
        jmp     short readRun
lastRun:
        mov     dx, [sectorsLeft]
readRun:
        sub     [sectorsLeft], dx
        push    ax                      ; the cluster that follows
        mov     cx, dx
        lea     ax, [di - 2]
        mov     bl, SectorsPerCluster
        mov     bh, 0
        mul     bx
        add     ax, [dataSector]
        call    readSectors
        pop     di
        cmp     word [sectorsLeft], 0
        jne     nextRun

        mov     bl, Drive
        mov     bh, 0
        mov     dx, bx
        jmp     kKernel:0

; Reads sector AX to the buffer; returns the next sector in AX.
readToBuffer:
        mov     cx, kBufferSegment
        mov     es, cx
        mov     cx, 1

; Reads CX sectors from sector AX on to ES:0; returns the next sector in AX and the segment that follows in ES. A call of
; the firmware stays on one track and in one piece of 64 KB, which the PC's disk controller cannot leave. BX, CX, DX, SI and
; DI are lost.
readSectors:
        mov     [wanted], cx
nextPiece:
        push    ax
        mov     si, es
        not     si
        and     si, 0FFFh
        inc     si                      ; paragraphs up to the next 64 KB
        mov     cl, 5
        shr     si, cl
        cmp     si, [wanted]
        jbe     inOnePiece
        mov     si, [wanted]
inOnePiece:
        xor     dx, dx
        div     SectorsPerTrack
        mov     cx, SectorsPerTrack
        sub     cx, dx                  ; sectors up to the end of the track
        cmp     si, cx
        jbe     onOneTrack
        mov     si, cx
onOneTrack:
        inc     dx
        mov     bl, dl                  ; the sector, counted from 1
        xor     dx, dx
        div     Heads
        mov     ch, al                  ; CH: cylinder
        mov     cl, bl                  ; CL: sector
        mov     dh, dl                  ; DH: head
        mov     dl, Drive
        xor     bx, bx
        mov     di, 5                   ; the first reads after the motor starts often fail
readAgain:
        mov     ax, si
        mov     ah, 02h                 ; read AL sectors
        int     13h
        jnc     wasRead
        mov     ah, 0                   ; reset the drive
        int     13h
        dec     di
        jnz     readAgain
        mov     si, textRead
        jmp     short fail
wasRead:
        sub     [wanted], si
        pop     ax
        add     ax, si
        mov     cl, 5
        shl     si, cl
        mov     bx, es
        add     bx, si
        mov     es, bx
        cmp     word [wanted], 0
        jne     nextPiece
        ret

; Prints the text at SI and the prompt, waits for a key and lets the firmware start again with its own disk table.
fail:
        call    print
        mov     si, textPrompt
        call    print
        mov     ah, 0                   ; wait for a key
        int     16h
        les     bx, [diskTable]
        mov     cx, es
        xor     ax, ax
        mov     ds, ax
        mov     [kDiskVector], bx
        mov     [kDiskVector + 2], cx
        int     19h

print:
        lodsb
        test    al, al
        jz      printed
        mov     ah, 0Eh
        mov     bx, 7
        int     10h
        jmp     print
printed:
        ret

kernelName:
        db      "KERNEL  SYS"
textMissing:
        db      13, 10, "No KERNEL.SYS on this disk", 0
textDamaged:
        db      13, 10, "KERNEL.SYS is damaged", 0
textLarge:
        db      13, 10, "KERNEL.SYS is too large", 0
textRead:
        db      13, 10, "Disk cannot be read", 0
textPrompt:
        db      13, 10, "Change disk, press a key", 0

sectorsLeft     dw      0               ; of KERNEL.SYS
wanted          dw      0               ; sectors that readSectors has still to read
diskTable       dd      0               ; from the boot sector, in this order: the firmware's disk table
dataSector      dd      0               ; and the first data sector

        times   kFileSectors * 512 - ($ - $$) db 0
