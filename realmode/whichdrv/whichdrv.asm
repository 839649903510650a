; WHICHDRV.COM: ends with the number of a drive, 1 for A:, 2 for B: ..., and prints nothing.
;
;   WHICHDRV           the current drive. In AUTOEXEC.BAT that is the drive that DOS started from
;   WHICHDRV CD        the first CD-ROM drive with a disc that DOS can read
;   WHICHDRV CDROM     the first CD-ROM drive, with or without a disc
;   WHICHDRV X:        that drive, if DOS can read it
;   WHICHDRV X: WRITE  that drive, if 2 KB can be written to it: a file in its root, which is deleted again
;   WHICHDRV HD        the first hard disk drive that DOS can read: neither a RAM drive nor a CD nor a network drive
;
; Without such a drive it ends with 0; so it does after any other argument, with a line on the error output. CD-ROM drives are
; those that MSCDEX or another program with its interface names (INT 2Fh, functions 1500h and 150Dh). DOS does not ask what to do
; about a drive that cannot be read or written. Without the word WRITE nothing is written.
;
; 8086 instructions only, DOS 3.1 or later. Memory: nothing beyond the 64 KB that DOS gives a .COM program.

        cpu     8086
        bits    16
        org     100h

kTail           equ     80h             ; the arguments in the program's prefix
kFoldersToo     equ     10h
kTrialBytes     equ     2048            ; two clusters at least on every floppy
kNoMoreFiles    equ     12h
kFileNotFound   equ     2

        cld
        call    readArguments
        mov     dx, textUsage
        jc      complain
        push    bx
        call    initialiseDrives
        pop     bx
        jc      none
        jmp     bx

complain:
        mov     bx, 2                   ; error output
        mov     cx, textUsageEnd - textUsage
        mov     ah, 40h
        int     21h
none:
        mov     al, 0
end:
        mov     ah, 4Ch
        int     21h

currentDrive:
        mov     ah, 19h
        int     21h
        inc     ax
        jmp     short end

; MSCDEX lists the drives after the program.
anyCd:
        mov     byte [needsDisc], 0
readableCd:
        mov     ax, 1500h               ; BX: how many
        xor     bx, bx
        int     2Fh
        test    bx, bx
        jz      none
        cmp     bx, kDrives
        ja      none
        push    bx
        push    cs
        pop     es
        mov     di, cdDrives
        mov     [di], cl                ; the first, should 150Dh be unknown
        mov     bx, di
        mov     ax, 150Dh
        int     2Fh
        push    cs
        pop     es
        pop     cx
        mov     si, cdDrives
nextCd:
        lodsb
        cmp     al, kDrives
        jae     notThisCd
        mov     [drive], al
        cmp     byte [needsDisc], 0
        je      found
        push    cx
        push    si
        mov     cx, kFoldersToo
        call    findInRoot
        pop     si
        pop     cx
        jnc     found
notThisCd:
        loop    nextCd
        jmp     short none

namedDrive:
        call    isReadable
        jnc     found
        jmp     none

writableDrive:
        call    isReadable
        jc      cannotWrite
        call    isWritable
        jnc     found
cannotWrite:
        jmp     none

hardDisk:
        mov     byte [drive], kFirstDrive
nextDrive:
        call    isLocalDisk
        jc      notThis
        call    isVelRam
        jnc     notThis
        call    isRamDrive
        jnc     notThis
        call    isReadable
        jnc     found
notThis:
        inc     byte [drive]
        cmp     byte [drive], kDrives
        jb      nextDrive
        jmp     none
found:
        mov     al, [drive]
        inc     ax
        jmp     end

; Returns with the carry flag set when DOS cannot read the root of [drive]; an empty one is read.
isReadable:
        mov     cx, kFoldersToo
        call    findInRoot
        jnc     readable
        cmp     ax, kNoMoreFiles
        je      readable
        cmp     ax, kFileNotFound
        je      readable
        stc
        ret
readable:
        call    driveNumber
        mov     dl, bl
        mov     ah, 36h                 ; its space, for which DOS reads the table of clusters
        int     21h
        inc     ax                      ; it was FFFFh for an unknown drive
        jz      unreadable
        clc
        ret
unreadable:
        stc
        ret

; Returns with the carry flag set when no file of kTrialBytes can be written to [drive].
isWritable:
        mov     al, [drive]
        add     al, "A"
        mov     [trialFile], al
        mov     dx, trialFile
        xor     cx, cx
        mov     ah, 5Ah                 ; creates a file under a name that is free, and appends the name
        int     21h
        jc      tried
        mov     bx, ax
        mov     dx, 100h                ; any bytes
        mov     cx, kTrialBytes
        mov     ah, 40h
        int     21h
        jc      written
        cmp     ax, cx                  ; fewer: the disk is full
written:
        sbb     si, si                  ; not 0 once something has failed
        mov     ah, 3Eh
        int     21h
        sbb     ax, ax
        or      si, ax
        mov     dx, trialFile
        mov     ah, 41h
        int     21h
        sbb     ax, ax
        or      si, ax
        shl     si, 1
tried:
        ret

; Returns in BX where the argument is done. The carry flag is set when it is none of those above.
readArguments:
        mov     si, kTail + 1
        call    skipSpace
        mov     bx, currentDrive
        jz      argumentsDone
        dec     si
        mov     al, [si]
        and     al, 0DFh                ; a letter in upper case
        sub     al, "A"
        cmp     al, kDrives
        jae     notNamed
        cmp     byte [si + 1], ":"
        jne     notNamed
        mov     [drive], al
        mov     bx, namedDrive
        lodsw
        call    skipSpace
        jz      argumentsDone
        dec     si
        mov     bx, writableDrive
        mov     di, wordWrite
        jmp     short isWord
notNamed:
        mov     bx, anyCd
        mov     di, wordCdRom
        call    isWord
        jnc     argumentsDone
        mov     bx, readableCd
        mov     di, wordCd
        call    isWord
        jnc     argumentsDone
        mov     bx, hardDisk
        mov     di, wordHd
        call    isWord
argumentsDone:
        ret

; Returns with the carry flag set when the arguments at SI are not the word at DI and nothing after it. Keeps SI and BX.
isWord:
        push    si
nextOfWord:
        mov     al, [di]
        inc     di
        test    al, al
        jz      wordEnds
        mov     ah, [si]
        inc     si
        cmp     ah, "a"
        jb      isCapital
        and     ah, 0DFh
isCapital:
        cmp     al, ah
        je      nextOfWord
wordDiffers:
        pop     si
        stc
        ret
wordEnds:
        call    skipSpace
        jnz     wordDiffers
        pop     si
        clc
        ret

%include "arguments.inc"
%include "drives.inc"

drive           db      0
needsDisc       db      1
wordCd          db      "CD", 0
wordCdRom       db      "CDROM", 0
wordHd          db      "HD", 0
wordWrite       db      "WRITE", 0
textUsage:
        db      "WHICHDRV [CD | CDROM | HD | X: [WRITE]]: ends with the number of the drive", 13, 10
textUsageEnd:
trialFile:
        db      "A:\", 0                ; DOS puts a name after it
cdDrives:                               ; kDrives bytes after the program
