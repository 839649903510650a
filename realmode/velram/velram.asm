; VELRAM.SYS: a RAM drive in extended memory, a block device driver for CONFIG.SYS.
;
;   DEVICE=VELRAM.SYS       half of the largest free piece of extended memory
;   DEVICE=VELRAM.SYS /H    the same
;   DEVICE=VELRAM.SYS KB    that many KB, 64 to 65535
;
; It needs an XMS manager (HIMEM.SYS) in a line before it. When there is none, when less is free than was asked for, or when
; the line holds anything else, it says so in one line and does not stay in memory; DOS continues without it.
;
; The drive has 512 bytes a sector, one FAT and 128 root entries; up to 8160 KB it is FAT12, above that FAT16. Its label, its
; OEM name and the name in the driver's header are VELRAM: the last one is how FINDRAM.COM knows it, whatever label the user
; gives it. It is not removable and never changes. Below DOS 4 it has at most 32767 KB, since such a DOS counts sectors
; in 16 bits.
;
; 8086 instructions only, as the XMS manager does the moving. DOS keeps the part in front of `init`.

        cpu     8086
        bits    16
        org     0

kLeastKb        equ     64
kMostKbOldDos   equ     32767
kSectorBytes    equ     512
kRootEntries    equ     128
kReserved       equ     1               ; sectors
kMedia          equ     0F8h
kSerial         equ     56454C52h
kDate           equ     0021h           ; 1 January 1980

; The driver takes 32-bit sector numbers (bit 1), generic IOCTL (6), opening, closing and "is it removable" (11).
kAttributes     equ     0842h

; Offsets in a request, and status words.
kLength         equ     0
kUnit           equ     1
kCommand        equ     2
kStatus         equ     3
kUnits          equ     0Dh             ; of the answer to init
kCategory       equ     0Dh
kFunction       equ     0Eh
kChanged        equ     0Eh
kBreak          equ     0Eh
kBuffer         equ     0Eh
kCount          equ     12h
kArguments      equ     12h
kBpb            equ     12h
kParameters     equ     13h
kStart          equ     14h
kDriveNumber    equ     16h
kLongStart      equ     1Ah
kLongLength     equ     1Eh             ; of a request that has kLongStart
kDone           equ     0100h
kBusy           equ     0200h
kUnknownUnit    equ     8101h
kUnknownCommand equ     8103h
kNoSector       equ     8108h
kWriteFault     equ     810Ah
kReadFault      equ     810Bh

kDiskCategory   equ     8
kGetParameters  equ     60h
kGetMediaId     equ     66h

kXmsFree        equ     08h
kXmsAllocate    equ     09h
kXmsRelease     equ     0Ah
kXmsMove        equ     0Bh

        dd      -1                      ; no further driver in this file
        dw      kAttributes
        dw      strategy
        dw      interrupt
        db      1, "VELRAM "            ; DOS writes the number of units

request dd      0
xms     dd      0

; What the XMS manager moves; the two sides are a handle and an address in its block, or 0 and a far pointer.
move:
.length dd      0
.source dw      0
        dd      0
.target dw      0
        dd      0
handle  dw      0

bpbs    dw      bpb
bpb:
        dw      kSectorBytes
.spc    db      1
        dw      kReserved
        db      1                       ; FATs
        dw      kRootEntries
.small  dw      0                       ; sectors, or 0 when 16 bits do not hold the number
        db      kMedia
.fat    dw      0                       ; sectors per FAT
        dw      2                       ; sectors per track and heads: a track is 1 KB
        dw      1
        dd      0                       ; hidden sectors
.total  dd      0                       ; sectors, or 0 when .small has the number
kBpbBytes       equ     $ - bpb

sectors dd      0                       ; of the drive
tracks  dw      0

mediaId:
        dd      kSerial
label:  db      "VELRAM     "
fsType: db      "FAT12   "
kMediaIdBytes   equ     $ - mediaId

commands:
        dw      init, mediaCheck, buildBpb, unknown     ; 0
        dw      readSectors, unknown, unknown, unknown  ; 4
        dw      writeSectors, writeSectors, unknown, unknown
        dw      unknown, done, done, removable          ; 12: -, open, close
        dw      unknown, unknown, unknown, ioctl        ; 16
        dw      unknown, unknown, unknown, logical      ; 20: ..., get logical drive
        dw      logical, ioctlQuery                     ; 24: set logical drive
kCommands       equ     ($ - commands) / 2

strategy:
        mov     [cs:request], bx
        mov     [cs:request + 2], es
        retf

; Every command gets the request in ES:BX and DS = CS, and returns the status in AX; it may change all but SS and SP.
interrupt:
        pushf
        push    ax
        push    bx
        push    cx
        push    dx
        push    si
        push    di
        push    bp
        push    ds
        push    es
        cld
        push    cs
        pop     ds
        les     bx, [request]
        mov     al, [es:bx + kCommand]
        mov     ah, 0
        mov     si, ax
        mov     ax, kUnknownCommand
        cmp     si, kCommands
        jae     answer
        test    si, si
        jz      carryOut                ; init comes before there are units
        mov     ax, kUnknownUnit
        cmp     byte [es:bx + kUnit], 0
        jne     answer
carryOut:
        add     si, si
        call    [si + commands]
answer:
        les     bx, [cs:request]
        mov     [es:bx + kStatus], ax
        pop     es
        pop     ds
        pop     bp
        pop     di
        pop     si
        pop     dx
        pop     cx
        pop     bx
        pop     ax
        popf
        retf

mediaCheck:
        mov     byte [es:bx + kChanged], 1      ; not changed
done:
        mov     ax, kDone
        ret

unknown:
        mov     ax, kUnknownCommand
        ret

buildBpb:
        mov     word [es:bx + kBpb], bpb
        mov     [es:bx + kBpb + 2], cs
        jmp     done

removable:
        mov     ax, kDone | kBusy               ; it is not
        ret

logical:
        mov     byte [es:bx + kUnit], 0         ; the drive has one letter only
        jmp     done

ioctlQuery:
        cmp     byte [es:bx + kCategory], kDiskCategory
        jne     unknown
        cmp     byte [es:bx + kFunction], kGetParameters
        je      done
        cmp     byte [es:bx + kFunction], kGetMediaId
        je      done
        jmp     unknown

ioctl:
        cmp     byte [es:bx + kCategory], kDiskCategory
        jne     unknown
        mov     al, [es:bx + kFunction]
        les     di, [es:bx + kParameters]
        cmp     al, kGetMediaId
        je      getMediaId
        cmp     al, kGetParameters
        jne     unknown
        inc     di                      ; the first byte is DOS's
        mov     ax, 0105h               ; a fixed disk; not removable
        stosw
        mov     al, 0
        stosb
        mov     ax, [tracks]
        stosw
        mov     al, 0                   ; media type
        stosb
        mov     si, bpb
        mov     cx, kBpbBytes
        jmp     short giveBytes
getMediaId:
        inc     di                      ; the first word is DOS's
        inc     di
        mov     si, mediaId
        mov     cx, kMediaIdBytes
giveBytes:
        rep movsb
        jmp     done

readSectors:
        mov     bp, move.source         ; the side of the drive
        mov     di, kReadFault
        jmp     short transfer
writeSectors:
        mov     bp, move.target
        mov     di, kWriteFault

; DI is what AX becomes when the XMS manager fails.
transfer:
        mov     cx, [es:bx + kCount]
        mov     ax, [es:bx + kStart]
        xor     dx, dx
        cmp     ax, 0FFFFh              ; the sign of a 32-bit number
        jne     haveStart
        cmp     word [sectors + 2], 0   ; a DOS that knows so large a drive gives such numbers,
        jne     longStart
        cmp     byte [es:bx + kLength], kLongLength     ; and otherwise the request is long enough for one
        jb      haveStart
longStart:
        mov     ax, [es:bx + kLongStart]
        mov     dx, [es:bx + kLongStart + 2]
haveStart:
        push    di
        mov     si, ax
        mov     di, dx
        add     si, cx
        adc     di, 0
        jc      badSector
        cmp     di, [sectors + 2]
        jb      goodSector
        ja      badSector
        cmp     si, [sectors]
        ja      badSector
goodSector:
        les     bx, [es:bx + kBuffer]
        call    moveSectors
        pop     di
        test    ax, ax
        mov     ax, kDone
        jnz     transferred
        mov     ax, di
notTransferred:
        les     bx, [request]
        mov     word [es:bx + kCount], 0
transferred:
        ret
badSector:
        pop     di
        mov     ax, kNoSector
        jmp     notTransferred

; Moves CX sectors between ES:BX and the drive's sector DX:AX. BP is the side of the move that is the drive. Returns AX = 0
; when the XMS manager fails. BX, CX, DX, SI and DI are lost.
moveSectors:
        mov     di, move.source + move.target
        sub     di, bp                  ; the other side
        mov     word [di], 0
        mov     [di + 2], bx
        mov     [di + 4], es
        mov     dh, dl                  ; DX:AX times 512
        mov     dl, ah
        mov     ah, al
        mov     al, 0
        shl     ax, 1
        rcl     dx, 1
        mov     di, [handle]
        mov     [ds:bp], di
        mov     [ds:bp + 2], ax
        mov     [ds:bp + 4], dx
        mov     ax, kSectorBytes
        mul     cx
        mov     [move.length], ax
        mov     [move.length + 2], dx
        mov     si, move
        mov     ah, kXmsMove
        call    far [xms]
        ret

; From here on only for the start: DOS gets this memory back.
init:
        les     si, [es:bx + kArguments]
        call    readArguments
        mov     dx, textUsage
        jc      giveUp
        mov     ax, 4300h               ; is there an XMS manager
        int     2Fh
        mov     dx, textNoXms
        cmp     al, 80h
        jne     giveUp
        mov     ax, 4310h               ; its entry
        int     2Fh
        mov     [xms], bx
        mov     [xms + 2], es
        push    cs
        pop     ds
        call    chooseSize
        jc      giveUp
        mov     dx, [kilobytes]
        mov     ah, kXmsAllocate
        call    far [xms]
        mov     [handle], dx
        mov     dx, textNoMemory
        test    ax, ax
        jz      giveUp
        call    layOut
        call    format
        jc      giveBack

        les     bx, [request]
        mov     byte [es:bx + kUnits], 1
        mov     word [es:bx + kBreak], init
        mov     [es:bx + kBreak + 2], cs
        mov     word [es:bx + kBpb], bpbs
        mov     [es:bx + kBpb + 2], cs
        mov     dx, textDrive
        cmp     byte [es:bx + kLength], kDriveNumber
        jbe     noLetter                ; DOS 2 does not say which letter it is
        mov     al, [es:bx + kDriveNumber]
        add     [textLetter], al
        jmp     short sayDrive
noLetter:
        mov     dx, textNewDrive
sayDrive:
        call    print
        mov     ax, [kilobytes]
        call    printNumber
        mov     dx, textKb
        call    print
        mov     ax, kDone
        ret

giveBack:
        mov     dx, [handle]
        mov     ah, kXmsRelease
        call    far [xms]
        mov     dx, textFault
giveUp:
        call    print
        les     bx, [request]
        mov     byte [es:bx + kUnits], 0
        mov     word [es:bx + kBreak], 0        ; an end at the driver's own start: nothing stays
        mov     [es:bx + kBreak + 2], cs
        mov     ax, kDone
        ret

; Reads the rest of the line of CONFIG.SYS at ES:SI, from the driver's name on, into [kilobytes]: 0 for half of what is
; free. Returns with the carry flag set when it cannot be understood.
readArguments:
        mov     al, [es:si]
        cmp     al, "/"
        je      nameDone
        cmp     al, " "
        jbe     nameDone
        inc     si
        jmp     readArguments
nameDone:
        call    skipSpace
        jz      argumentsDone
        cmp     al, "/"
        je      readSwitch
        xor     cx, cx
nextDigit:
        mov     al, [es:si]
        sub     al, "0"
        cmp     al, 10
        jae     numberDone
        mov     ah, 0
        xchg    ax, cx
        mov     dx, 10
        mul     dx
        jc      argumentsBad
        add     cx, ax
        jc      argumentsBad
        inc     si
        jmp     nextDigit
numberDone:
        cmp     cx, kLeastKb
        jb      argumentsBad
        mov     [kilobytes], cx
        jmp     short lineEnd
readSwitch:
        mov     al, [es:si + 1]
        and     al, 0DFh                ; a capital
        cmp     al, "H"
        jne     argumentsBad
        inc     si
        inc     si
lineEnd:
        call    skipSpace
        jz      argumentsDone
argumentsBad:
        stc
argumentsDone:
        ret

; Moves SI to the next character at ES:SI that is not a space; returns it in AL and with the zero flag set when the line ends
; there. The carry flag is clear then.
skipSpace:
        mov     al, [es:si]
        inc     si
        cmp     al, " "
        je      skipSpace
        cmp     al, 9
        je      skipSpace
        dec     si
        cmp     al, " "
        ja      skipped
        cmp     al, al                  ; CR, LF, 0 or 1Ah: which one depends on the DOS
skipped:
        ret

; Sets [kilobytes] to the size of the drive. Returns with the carry flag set when there is not as much memory, and then in
; DX what to say.
chooseSize:
        mov     ah, kXmsFree
        call    far [xms]               ; AX: KB of the largest free piece
        cmp     word [kilobytes], 0
        jne     haveSize
        mov     [kilobytes], ax
        shr     word [kilobytes], 1
haveSize:
        mov     dx, textNoMemory
        cmp     [kilobytes], ax
        ja      noSize
        cmp     word [kilobytes], kLeastKb
        jb      noSize
        mov     ah, 30h                 ; version of DOS
        int     21h
        cmp     al, 4
        jae     sizeDone
        cmp     word [kilobytes], kMostKbOldDos
        jbe     sizeDone
        mov     word [kilobytes], kMostKbOldDos
sizeDone:
        clc
        ret
noSize:
        stc
        ret

; Fills in the description of the drive. A cluster is as small as its FAT allows; an entry for each cluster of the whole
; drive leaves enough for the first two.
layOut:
        mov     ax, [kilobytes]
        mov     [tracks], ax
        xor     dx, dx
        add     ax, ax
        adc     dx, dx
        mov     [sectors], ax
        mov     [sectors + 2], dx
        mov     [bpb.total], ax
        mov     [bpb.total + 2], dx
        test    dx, dx
        jnz     isLarge
        mov     [bpb.small], ax
        mov     [bpb.total], dx
isLarge:
        mov     bl, 1
nextSize:
        test    dx, dx
        jne     fat16
        cmp     ax, 4080                ; entries; a FAT12 has 4084 at most, and not every DOS agrees on the last ones
        jbe     fat12
        shr     ax, 1
        adc     ax, 0
        add     bl, bl
        cmp     bl, 8
        jb      nextSize
fat16:
        mov     byte [fsType + 4], "6"
        mov     byte [bpb.spc], 2
        mov     al, [kilobytes + 1]     ; 256 entries in a sector, and an entry for each KB
        mov     ah, 0
        inc     ax
        mov     [bpb.fat], ax
        ret
fat12:
        mov     [bpb.spc], bl
        mov     dx, ax
        shr     dx, 1
        adc     ax, dx                  ; 1.5 bytes for each
        add     ax, kSectorBytes - 1
        mov     cl, 9
        shr     ax, cl
        mov     [bpb.fat], ax
        ret

; Writes the boot sector, the FAT and the root directory. Returns with the carry flag set when the XMS manager fails.
format:
        push    cs
        pop     es
        mov     si, bpb
        mov     di, bootSector.bpb
        mov     cx, kBpbBytes
        rep movsb
        mov     si, mediaId
        mov     di, bootSector.id
        mov     cx, kMediaIdBytes
        rep movsb
        mov     word [next], 0
        mov     bx, bootSector
        call    writeNext
        jc      formatted

        mov     bx, fatStart            ; the entries 0 and 1 of a FAT12 or FAT16
        cmp     byte [fsType + 4], "6"
        jne     threeBytes
        mov     byte [fatStart + 3], 0FFh
threeBytes:
        call    writeNext
        jc      formatted
        mov     cx, [bpb.fat]
        dec     cx
        call    writeEmpty
        jc      formatted

        mov     bx, rootStart
        call    writeNext
        jc      formatted
        mov     cx, kRootEntries * 32 / kSectorBytes - 1

; Writes CX sectors of zeros.
writeEmpty:
        jcxz    formatted               ; the carry flag is clear here
        push    cx
        mov     bx, emptySector
        call    writeNext
        pop     cx
        jc      formatted
        loop    writeEmpty
        clc
formatted:
        ret

; Writes the sector at BX after the one before; returns with the carry flag set when that fails.
writeNext:
        mov     ax, [next]
        inc     word [next]
        xor     dx, dx
        mov     cx, 1
        mov     bp, move.target
        push    cs
        pop     es
        call    moveSectors
        cmp     ax, 1                   ; below for 0
        ret

; Prints the text at DX up to "$".
print:
        mov     ah, 9
        int     21h
        ret

; Prints AX as a decimal number.
printNumber:
        mov     bx, numberEnd
nextPlace:
        xor     dx, dx
        mov     cx, 10
        div     cx
        add     dl, "0"
        dec     bx
        mov     [bx], dl
        test    ax, ax
        jnz     nextPlace
        mov     dx, bx
        jmp     print

kilobytes       dw      0
next            dw      0

textDrive:
        db      "VELRAM: RAM drive "
textLetter:
        db      "A:, $"
textNewDrive:
        db      "VELRAM: RAM drive, $"
textKb:
        db      " KB", 13, 10, "$"
textUsage:
        db      "VELRAM: DEVICE=VELRAM.SYS [KB | /H], 64 to 65535 KB: no RAM drive", 13, 10, "$"
textNoXms:
        db      "VELRAM: no XMS manager, such as HIMEM.SYS, is loaded: no RAM drive", 13, 10, "$"
textNoMemory:
        db      "VELRAM: not enough extended memory is free: no RAM drive", 13, 10, "$"
textFault:
        db      "VELRAM: the XMS manager cannot write to its memory: no RAM drive", 13, 10, "$"
number: times   5 db 0
numberEnd:
        db      "$"

bootSector:
        jmp     short .code
        nop
        db      "VELRAM  "
.bpb:   times   kBpbBytes db 0
        db      0, 0, 29h               ; drive, reserved, and the sign that the following is there
.id:    times   kMediaIdBytes db 0
.code:  int     18h                     ; nothing can be started from here
        times   kSectorBytes - 2 - ($ - bootSector) db 0
        dw      0AA55h

fatStart:
        db      kMedia, 0FFh, 0FFh
        times   kSectorBytes - ($ - fatStart) db 0

rootStart:
        db      "VELRAM     ", 08h      ; the label
        times   12 db 0
        dw      kDate
        times   kSectorBytes - ($ - rootStart) db 0

emptySector:
        times   kSectorBytes db 0
