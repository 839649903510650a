; A stand-in for a DOS that runs one program: answers the calls of INT 21h that the programs of this project make, out of what
; the test wrote into the image, and reports on port E9h what the program does. It only reports; the test decides.
;
; From the test, at kGiven: see `given` and `disk`. Reports, a letter and a byte each:
;   "O" and "S"  a byte written to the standard output, to the error output
;   "D"          a drive (0 is A:) whose medium was touched
;   "G"          a drive that became the current one
;   "N"          a letter of the name of a file that was opened
;   "C"          a drive on which a file was created, and "E" one on which that file, closed, was deleted
;   "F"          1: the buffers of the disks were written back
;   "U"          the number of a function that is none of these
;   "X"          1: the handler of critical errors did not say "let the call fail"
;   "Q"          the program's exit code, and the end

%include "loader.inc"

kProgram        equ     2000h           ; the program's segment
kDrives         equ     26
kFile           equ     5               ; the handle of the opened file
kCreated        equ     6               ; the handle of the created file
kProtected      equ     2               ; of disk.unready
kFull           equ     3

        struc   given
.version:       resb    1               ; the major version of DOS
.fileThere:     resb    1               ; 0: the file cannot be opened
.failsAt:       resw    1               ; the position from which on the file cannot be read
.fileBytes:     resw    1
.hooks:         resb    1               ; of the bits below
.tail:          resb    57              ; of the command line, up to CR
.disks:         resb    kDrives * 32
                resb    400h - 64 - kDrives * 32
.program:       resb    2000h
.file:
        endstruc

kTakes          equ     1               ; this DOS takes interrupts that the firmware had,
kTable          equ     2               ; has the table of the firmware's addresses and an INT 19h that gives all back,
kAnswers13      equ     4               ; answers INT 2Fh, AH = 13h
kVirtual        equ     8               ; runs the program in virtual mode

        struc   disk
.there:         resb    1               ; 0: no such drive
.unready:       resb    1               ; 1: a critical error when the medium is touched, 2: when it is written, 3: it is full
.removable:     resb    1               ; 0 yes, 1 no, 2 its driver does not say
.described:     resb    1               ; 0: function 32h fails
.attributes:    resw    1
.clusters:      resw    1
.cluster:       resw    1               ; sectors of one
.driver:        resb    7               ; the name in the driver's header
.label:         resb    15              ; as a found name; empty: there is none
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
        mov     word [es:2Fh * 4], int2FCd
        mov     [es:2Fh * 4 + 2], cs
        call    takeInterrupts
        sti
        mov     ax, kProgram
        mov     es, ax
        mov     word [es:0], 20CDh      ; INT 20h, as in every prefix
        mov     word [es:2], 9000h      ; the end of the program's memory
        mov     si, kGiven + given.tail
        mov     di, 81h
        mov     cx, 57
        rep movsb
        mov     si, kGiven + given.program
        mov     di, 100h
        mov     cx, 2000h / 2
        rep movsw
        test    byte [kGiven + given.hooks], kVirtual
        jnz     startVirtual
        mov     ds, ax
        mov     ss, ax
        xor     sp, sp
        push    word 0
        jmp     kProgram:100h

%include "program/hooks.inc"

; MSCDEX: the drives with the attributes kCd are CD-ROM drives.
kCd             equ     1002h

int2FCd:
        cmp     ax, 1500h
        je      .count
        cmp     ax, 150Dh
        je      .list
        iret
.count:
        xor     bx, bx
        call    .each
        xor     cx, cx
        test    bx, bx
        jz      .counted
        mov     cl, [cs:cdDrives]
.counted:
        iret
.list:
        push    bx
        push    cx
        push    di
        push    bx
        xor     bx, bx
        call    .each
        mov     cx, bx
        pop     di
        xor     bx, bx
.next:
        mov     al, [cs:cdDrives + bx]
        mov     [es:di + bx], al
        inc     bx
        loop    .next
        pop     di
        pop     cx
        pop     bx
        iret
; Lists them at cdDrives; BX counts them.
.each:
        mov     al, 0
.nextDrive:
        push    ax
        push    di
        call    findDisk
        jc      .notThis
        cmp     word [cs:di + disk.attributes], kCd
        jne     .notThis
        mov     [cs:cdDrives + bx], al
        inc     bx
.notThis:
        pop     di
        pop     ax
        inc     ax
        cmp     al, kDrives
        jb      .nextDrive
        ret
cdDrives:
        times   kDrives db 0

int21:
        cmp     ah, 25h
        je      setVector
        cmp     ah, 30h
        je      version
        cmp     ah, 40h
        je      write
        cmp     ah, 4Ch
        je      quit
        cmp     ah, 44h
        je      control
        cmp     ah, 32h
        je      describe
        cmp     ah, 36h
        je      space
        cmp     ah, 4Eh
        je      findLabel
        cmp     ah, 0Eh
        je      setDrive
        cmp     ah, 3Dh
        je      open
        cmp     ah, 3Fh
        je      read
        cmp     ah, 3Eh
        je      close
        cmp     ah, 0Dh
        je      flush
        cmp     ah, 5Ah
        je      create
        cmp     ah, 41h
        je      delete
        push    ax
        mov     al, ah
        mov     ah, "U"
        call    report
        pop     ax
fails:
        mov     ax, 1
; Returns to the program with the carry flag set, or cleared.
returnError:
        push    bp
        mov     bp, sp
        or      byte [bp + 6], 1
        pop     bp
        iret
returnGood:
        push    bp
        mov     bp, sp
        and     byte [bp + 6], 0FEh
        pop     bp
        iret

; Reports AH and AL.
report:
        push    ax
        xchg    al, ah
        out     0E9h, al
        xchg    al, ah
        out     0E9h, al
        pop     ax
        ret

version:
        mov     al, [cs:kGiven + given.version]
        mov     ah, 0
        iret

setVector:
        push    ds
        push    es
        push    bx
        push    ds
        pop     es
        xor     bx, bx
        mov     ds, bx
        mov     bl, al
        shl     bx, 2
        mov     [bx], dx
        mov     [bx + 2], es
        pop     bx
        pop     es
        pop     ds
        iret

quit:
        mov     ah, "Q"
        call    report
        mov     al, 31h
        out     0F4h, al
stop:
        hlt
        jmp     stop

setDrive:
        mov     al, dl
        mov     ah, "G"
        call    report
        mov     al, kDrives
        iret

flush:
        mov     ax, 4601h               ; "F"
        call    report
        iret

write:
        cmp     bx, kCreated
        je      writeCreated
        push    cx
        push    si
        mov     si, dx
        mov     ah, "O"
        cmp     bx, 1
        je      .next
        mov     ah, "S"
        cmp     bx, 2
        je      .next
        mov     ah, "U"
.next:
        jcxz    .done
        lodsb
        call    report
        dec     cx
        jmp     .next
.done:
        pop     si
        pop     cx
        mov     ax, cx
        jmp     returnGood

; Points DI at the description of the drive AL, 0 for A:; with the carry flag set when there is no such drive.
findDisk:
        cmp     al, kDrives
        jae     .none
        push    ax
        mov     ah, 0
        shl     ax, 5
        add     ax, kGiven + given.disks
        mov     di, ax
        pop     ax
        cmp     byte [cs:di + disk.there], 1
        ret
.none:
        stc
        ret

; The same, for functions that touch the medium.
touch:
        mov     ah, "D"
        call    report
        call    findDisk
        jc      touched
        cmp     byte [cs:di + disk.unready], 1
        clc
        jne     touched
; Asks the program what to do, and returns with the carry flag set.
criticalError:
        push    di
        mov     ah, 19h                 ; about a directory; to fail, to retry or to ignore is allowed
        int     24h
        pop     di
        cmp     al, 3
        je      .failed
        mov     ax, 5801h               ; "X"
        call    report
.failed:
        stc
touched:
        ret

control:
        cmp     al, 9
        je      .remote
        cmp     al, 8
        je      .removable
        mov     ah, "U"
        call    report
        jmp     fails
.remote:
        push    di
        mov     al, bl
        dec     al
        call    findDisk
        jc      .noDrive
        mov     dx, [cs:di + disk.attributes]
        pop     di
        jmp     returnGood
.removable:
        push    di
        mov     al, bl
        dec     al
        call    findDisk
        jc      .noDrive
        mov     al, [cs:di + disk.removable]
        mov     ah, 0
        pop     di
        cmp     al, 2
        jb      returnGood
        jmp     fails                   ; invalid function
.noDrive:
        pop     di
        mov     ax, 15
        jmp     returnError

; DOS's description of a drive: it contains only the address of the driver, in its two places.
describe:
        push    di
        mov     al, dl
        dec     al
        call    touch
        jc      .none
        cmp     byte [cs:di + disk.described], 0
        je      .none
        push    cs
        pop     ds
        mov     bx, description
        mov     word [bx + 12h], 0FFFFh
        mov     [bx + 15h], cs
        lea     ax, [di + disk.driver - 0Bh]
        mov     [bx + 13h], ax
        cmp     byte [kGiven + given.version], 4
        jae     .done
        mov     [bx + 12h], ax
        mov     [bx + 14h], cs
        mov     byte [bx + 16h], 0FFh
.done:
        pop     di
        mov     al, 0
        iret
.none:
        pop     di
        mov     al, 0FFh
        iret

space:
        push    di
        mov     al, dl
        dec     al
        call    touch
        jc      .none
        mov     ax, [cs:di + disk.cluster]
        mov     dx, [cs:di + disk.clusters]
        mov     bx, 0
        mov     cx, 512
        pop     di
        iret
.none:
        pop     di
        mov     ax, 0FFFFh
        iret

; Only labels are searched for; the answer is left in the place that the program's prefix has for it.
findLabel:
        push    di
        push    si
        mov     si, dx
        mov     al, [si]
        sub     al, "A"
        cmp     word [si + 2], "\*"
        jne     .otherUse
        cmp     cx, 8
        je      .label
        cmp     cx, 10h                 ; files and folders: there are none but on a CD
        jne     .otherUse
        call    touch
        jc      .failed
        cmp     word [cs:di + disk.attributes], kCd
        jne     .none
        pop     si
        pop     di
        jmp     returnGood
.failed:
        pop     si
        pop     di
        mov     ax, 83                  ; the handler of critical errors let the call fail
        jmp     returnError
.label:
        call    touch
        jc      .none
        cmp     byte [cs:di + disk.label], 0
        je      .none
        push    ds
        push    es
        mov     si, di
        add     si, disk.label
        mov     ax, kProgram
        mov     es, ax
        push    cs
        pop     ds
        mov     di, 80h + 1Eh
        mov     cx, 13
        rep movsb
        mov     cx, 8
        pop     es
        pop     ds
        pop     si
        pop     di
        jmp     returnGood
.otherUse:
        mov     ax, 554Eh               ; "U"
        call    report
.none:
        pop     si
        pop     di
        mov     ax, 18
        jmp     returnError

open:
        push    si
        cmp     al, 0                   ; for reading
        jne     .otherUse
        mov     si, dx
        mov     ah, "N"
.next:
        lodsb
        test    al, al
        jz      .named
        call    report
        jmp     .next
.named:
        pop     si
        mov     word [cs:position], 0
        cmp     byte [cs:kGiven + given.fileThere], 0
        mov     ax, 2
        je      returnError
        mov     ax, kFile
        jmp     returnGood
.otherUse:
        pop     si
        mov     ax, 553Dh               ; "U"
        call    report
        jmp     fails

; DS:DX gets up to CX bytes of the file.
read:
        cmp     bx, kFile
        jne     fails
        push    cx
        push    si
        push    di
        push    ds
        push    es
        mov     si, [cs:position]
        mov     ax, 5
        cmp     si, [cs:kGiven + given.failsAt]
        jae     .failed
        mov     ax, [cs:kGiven + given.fileBytes]
        sub     ax, si
        cmp     cx, ax
        jbe     .inFile
        mov     cx, ax
.inFile:
        mov     ax, cx
        add     [cs:position], cx
        add     si, kGiven + given.file
        push    ds
        pop     es
        mov     di, dx
        push    cs
        pop     ds
        rep movsb
        clc
        jmp     short .done
.failed:
        stc
.done:
        pop     es
        pop     ds
        pop     di
        pop     si
        pop     cx
        jc      returnError
        jmp     returnGood

close:
        cmp     bx, kCreated
        jne     returnGood
        cmp     byte [cs:createdOpen], 1
        jne     fails
        mov     byte [cs:createdOpen], 0
        jmp     returnGood

; The one file that can be created, in the root of the drive that DS:DX names.
create:
        push    di
        mov     di, dx
        mov     al, [di]
        sub     al, "A"
        mov     [cs:createdDrive], al
        cmp     word [di + 1], ":\"
        jne     .otherUse
        cmp     byte [di + 3], 0
        jne     .otherUse
        call    touch
        jc      .failed
        cmp     byte [cs:di + disk.unready], kProtected
        jne     .writable
        call    criticalError
        jmp     short .failed
.writable:
        mov     di, dx
        mov     word [di + 3], "AB"
        mov     byte [di + 5], 0
        mov     byte [cs:createdOpen], 1
        mov     al, [cs:createdDrive]
        mov     ah, "C"
        call    report
        pop     di
        mov     ax, kCreated
        jmp     returnGood
.otherUse:
        mov     ax, 555Ah               ; "U"
        call    report
.failed:
        pop     di
        mov     ax, 83
        jmp     returnError

; A full disk takes one sector.
writeCreated:
        cmp     byte [cs:createdOpen], 1
        jne     fails
        push    di
        mov     al, [cs:createdDrive]
        call    findDisk
        mov     ax, cx
        cmp     byte [cs:di + disk.unready], kFull
        pop     di
        jne     returnGood
        mov     ax, 512
        jmp     returnGood

; Only the file that was created, once it is closed.
delete:
        push    di
        mov     di, dx
        mov     al, [di]
        sub     al, "A"
        cmp     al, [cs:createdDrive]
        jne     .otherUse
        cmp     word [di + 3], "AB"
        jne     .otherUse
        cmp     byte [cs:createdOpen], 0
        jne     .otherUse
        mov     ah, "E"
        call    report
        pop     di
        jmp     returnGood
.otherUse:
        pop     di
        mov     ax, 5541h               ; "U"
        call    report
        jmp     fails

createdDrive    db      0FFh
createdOpen     db      0
position dw     0
description:
        times   24h db 0FFh

        times   kGiven - ($ - $$) db 0
