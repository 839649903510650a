; FINDRAM.COM: which letter the RAM drive has.
;
;   FINDRAM       prints the line "SET RAMD=D:" and ends with the number of the drive: 3 for C:, 4 for D: ...
;   FINDRAM /G    the same, and makes that drive the current one
;
; Without a RAM drive it prints nothing, changes nothing and ends with 0; so it does after any other argument, with a line on
; the error output. A batch file on a disk that cannot be written gets the letter through the RAM drive itself:
;
;   FINDRAM /G >NUL
;   IF NOT ERRORLEVEL 1 GOTO NORAM
;   FINDRAM >RAMD.BAT
;   CALL RAMD.BAT
;
; A RAM drive is one of VELRAM.SYS, known by the name in its driver's header, or else one of the user's RAMDRIVE.SYS, known
; by the label MS-RAMDRIVE on a drive that has at most 65535 sectors, as all drives of that driver have. Only C: to Z: are
; looked at, and of these only drives that DOS calls local and not removable: no floppy and no CD is touched, and nothing is
; written. A drive that cannot be read is none.
;
; 8086 instructions only, DOS 3.1 or later. Memory: nothing beyond the 64 KB that DOS gives a .COM program.

        cpu     8086
        bits    16
        org     100h

kTail           equ     80h             ; the arguments in the program's prefix

        cld
        call    readArguments
        mov     dx, textUsage
        jc      complain
        call    initialiseDrives
        jc      none

        mov     bl, kFirstDrive
nextDrive:
        mov     [drive], bl
        call    isLocalDisk
        jc      notThis
        call    isVelRam
        jnc     found
        cmp     byte [ramDrive], 0
        jne     notThis
        call    isRamDrive
        jc      notThis
        mov     bl, [drive]
        mov     [ramDrive], bl
notThis:
        mov     bl, [drive]
        inc     bl
        cmp     bl, kDrives
        jb      nextDrive
        mov     bl, [ramDrive]
        mov     [drive], bl
        test    bl, bl
        jz      none

found:
        mov     al, [drive]
        add     al, "A"
        mov     [textLetter], al
        cmp     byte [go], 0
        je      staysHere
        mov     dl, [drive]
        mov     ah, 0Eh                 ; make it the current drive
        int     21h
staysHere:
        mov     bx, 1                   ; standard output
        mov     cx, textSetEnd - textSet
        mov     dx, textSet
        mov     ah, 40h
        int     21h
        mov     al, [drive]
        inc     ax
        jmp     short end
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

; Sets [go]. Returns with the carry flag set when the arguments are others than those above.
readArguments:
        mov     si, kTail + 1
        call    skipSpace
        jz      argumentsDone
        cmp     word [si - 1], "/G"
        je      goThere
        cmp     word [si - 1], "/g"
        jne     argumentsBad
goThere:
        inc     si
        inc     byte [go]
        call    skipSpace
        jz      argumentsDone
argumentsBad:
        stc
argumentsDone:
        ret

%include "arguments.inc"
%include "drives.inc"

drive           db      0
ramDrive        db      0
go              db      0
textSet:
        db      "SET RAMD="
textLetter:
        db      "C:", 13, 10
textSetEnd:
textUsage:
        db      "FINDRAM [/G]: ends with the number of the RAM drive; /G goes there", 13, 10
textUsageEnd:
