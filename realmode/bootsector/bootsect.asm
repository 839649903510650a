; The boot sector of the floppies: finds IO.SYS of MS-DOS 7 (Windows 95 and 98), loads its first 2 KiB and hands
; over to it. One sector serves all sizes of disks, because every number is taken from the description of the disk at
; its start, which bfi fills in; the values below describe a 1.44 MB disk. The first copy of the FAT has to lie on the
; first track, as it does on every floppy of DOS.
;
; 8086 instructions only. Memory, all in segment 0:
;   0522h  copy of the diskette parameter table, with this disk's values
;   0700h  IO.SYS, four sectors
;   7C00h  this sector; the stack and the values handed over to IO.SYS grow down from here
;   7E00h  one sector of the root directory, later the first copy of the FAT

        cpu     8086
        bits    16
        org     7C00h

kIoSys          equ     0700h           ; IO.SYS expects to be at 0070:0000
kIoSysEnd       equ     kIoSys + 4 * 512
kIoSysEntry     equ     0200h           ; where its code starts from there
kBuffer         equ     7E00h
kDiskTable      equ     0522h
kDiskVector     equ     1Eh * 4

; The description of the disk and the values below it, from BP = 7C00h.
%define SectorsPerCluster       byte [bp + 0Dh]
%define ReservedSectors         word [bp + 0Eh]
%define Fats                    byte [bp + 10h]
%define RootEntries             word [bp + 11h]
%define SectorsPerFat           word [bp + 16h]
%define SectorsPerTrack         word [bp + 18h]
%define Heads                   word [bp + 1Ah]
%define Drive                   byte [bp + 24h]
%define DataSector              word [bp - 4]   ; a double word to IO.SYS; its high half is 0 on a floppy
%define ReadCommand             word [bp - 0Eh] ; AX of the firmware's read function: 02h, number of sectors
%define SectorsAtOnce           byte [bp - 0Eh]

        jmp     short start
        nop
        db      "MSWIN4.1"              ; some versions of Windows believe the description only after such a name
        dw      512
        db      1
        dw      1
        db      2
        dw      224
        dw      2880
        db      0F0h
        dw      9
        dw      18
        dw      2
        dd      0
        dd      0
        db      0
        db      0
        db      29h
        dd      0
        db      "NO NAME    "
        db      "FAT12   "

; The firmware promises only the drive in DL. CS may be 0 or 07C0h: no jump or address below depends on it.
start:
        cli
        cld
        xor     ax, ax
        mov     ss, ax
        mov     sp, 7C00h
        mov     bp, sp
        mov     es, ax
        mov     Drive, dl               ; IO.SYS takes the drive from here

; What IO.SYS finds on the stack: first data sector, old disk table, address of the table's vector. A floppy has no
; hidden sectors in front of it.
        mov     al, Fats
        mul     SectorsPerFat           ; DX becomes 0
        add     ax, ReservedSectors
        push    dx
        push    ax                      ; the root directory's sector for now
        mov     bx, kDiskVector
        lds     si, [es:bx]
        push    ds
        push    si
        push    dx
        push    bx

; A disk table that knows this disk's sectors per track: the firmware's may be that of a smaller disk.
        mov     di, kDiskTable
        mov     cx, 11
        rep movsb
        mov     ds, cx
        mov     byte [di - 11 + 9], 0Fh ; head settle time in milliseconds
        mov     ax, SectorsPerTrack
        mov     [di - 11 + 4], al
        mov     word [bx], kDiskTable
        mov     [bx + 2], cx
        sti
        mov     ax, 0201h
        push    ax                      ; ReadCommand
        mov     ah, 0                   ; reset the drive, so that it uses the new table
        mov     dl, Drive
        int     13h

        mov     ax, RootEntries
        mov     cl, 4                   ; 16 entries per sector
        shr     ax, cl
        xchg    ax, DataSector
        add     DataSector, ax
nextRootSector:
        mov     di, kBuffer
        mov     bx, di
        call    readSectors
nextEntry:
        cmp     [di], ch                ; CH stays 0 throughout: the end of the directory
        je      failMissing
        test    byte [di + 11], 18h     ; a label, a folder or a part of a long name
        jnz     skipEntry
        push    di
        mov     si, ioSysName
        mov     cx, 11
        repe cmpsb
        pop     di
        je      found
skipEntry:
        add     di, 32
        cmp     di, bx
        jb      nextEntry
        cmp     ax, DataSector
        jb      nextRootSector

failMissing:
        mov     si, textMissing
        jmp     short fail

; Reads sector AX to BX; returns the next sector in AX and the end of its bytes in BX. Outside the FAT it is one sector for
; each call, because not every firmware continues over the end of a track. DX and SI are lost.
readSectors:
        push    cx
        mov     si, 4                   ; the first reads after the motor starts often fail
readAgain:
        push    ax
        cwd
        div     SectorsPerTrack
        mov     cx, dx
        inc     cx                      ; CL: sector, counted from 1
        cwd
        div     Heads
        mov     ch, al                  ; CH: cylinder
        mov     dh, dl                  ; DH: head
        mov     dl, Drive
        mov     ax, ReadCommand
        int     13h
        jnc     wasRead
        mov     ah, 0                   ; reset the drive
        int     13h
        pop     ax
        dec     si
        jnz     readAgain

        mov     si, textRead

; Prints the text at SI and the prompt, its closing 0 as a space; waits for a key and lets the firmware start again.
fail:
        lodsb
        cmp     al, 0FFh
        jne     notYetPrompt
        mov     si, textPrompt
        lodsb
notYetPrompt:
        mov     ah, 0Eh
        mov     bx, 7
        int     10h
        test    al, al
        jnz     fail
        cbw                             ; AH is 0: wait for a key
        int     16h
        mov     sp, 7C00h - 0Ch
        pop     bx                      ; the vector's address, segment 0
        pop     ax
        pop     word [bx]
        pop     word [bx + 2]
        int     19h

wasRead:
        pop     ax
        pop     cx
        inc     ax
        add     bx, 512
        ret

; The chain is followed, so that IO.SYS may also be a file that DOS copied to where there was space.
found:
        mov     di, [di + 26]
        push    di
        mov     ax, SectorsPerFat       ; all on the first track, so one call will do
        mov     SectorsAtOnce, al
        mov     ax, ReservedSectors
        mov     bx, kBuffer
        call    readSectors
        mov     SectorsAtOnce, 1
        mov     bx, kIoSys
nextCluster:
        lea     ax, [di - 2]
        cmp     ax, 0FF0h - 2           ; the end of the chain, or no cluster at all: too short
        jae     failWrong
        mov     cl, SectorsPerCluster
        mul     cx
        add     ax, DataSector
nextSector:
        call    readSectors
        cmp     bx, kIoSysEnd
        je      loaded
        loop    nextSector
        mov     si, di                  ; 1.5 bytes for each cluster
        add     si, si
        add     si, di
        shr     si, 1
        mov     ax, [si + kBuffer]
        jnc     evenCluster
        mov     cl, 4
        shr     ax, cl
evenCluster:
        and     ah, 0Fh
        xchg    ax, di
        jmp     short nextCluster

loaded:
        cmp     word [kIoSys], "MZ"
        jne     failWrong
        cmp     word [kIoSys + kIoSysEntry], "BJ"
        jne     failWrong
        mov     dl, Drive
        pop     di                      ; IO.SYS takes its first cluster from here
        pop     ax                      ; ReadCommand
        jmp     kIoSys >> 4:kIoSysEntry

failWrong:
        mov     si, textWrong
        jmp     fail

textMissing:
        db      13, 10, "No IO.SYS on this disk", 0FFh

; The messages that IO.SYS shows when it cannot load the rest of itself: each of the four bytes says how far after it its text
; begins, and the byte 0 ends them all.
ioSysTexts:
        db      textWrong - ($ + 1)
        db      textRead - ($ + 1)
        db      textWrong - ($ + 1)
        db      textPrompt - ($ + 1)
textWrong:
        db      13, 10, "Not an MS-DOS 7 IO.SYS", 0FFh
textRead:
        db      13, 10, "Disk cannot be read", 0FFh
textPrompt:
        db      13, 10, "Change disk, press a key", 0

        times   1EEh - ($ - $$) db 0
        dw      ioSysTexts              ; where IO.SYS looks for the address of its messages
ioSysName:
        db      "IO      SYS"
        times   1FEh - ($ - $$) db 0
        dw      0AA55h
