; Stand-in for somebody else's program: shows TEXT and the arguments that a disk starts it with, then LAST, and ends with code 0.
;
;   DRIVER defined   a packet driver without a card: takes the interrupt 60h, at which programs look for the signature of such
;                    a driver, and stays in memory. When there is one already it says so and ends with code 1
;   TOOL defined     a program that needs a packet driver: without one it says so and ends with code 1

        cpu     8086
        bits    16
        org     100h

kVector         equ     60h
kBadCommand     equ     11              ; a packet driver's error

%ifdef DRIVER
        jmp     start

; Every call fails: DH has the error, and the caller's carry flag is set.
handler:
        jmp     short fail
        nop
        db      "PKT DRVR", 0           ; in the fourth byte of a packet driver's handler
fail:
        mov     dh, kBadCommand
        push    bp
        mov     bp, sp
        or      byte [bp + 6], 1
        pop     bp
        iret
handlerEnd:
start:
%endif
        mov     dx, text
        mov     ah, 9                   ; print up to "$"
        int     21h
        mov     si, 80h                 ; the length of the arguments, and these
        lodsb
        mov     cl, al
        mov     ch, 0
        mov     dx, si
        mov     bx, 1                   ; standard output
        mov     ah, 40h
        int     21h
        mov     dx, last
        mov     ah, 9
        int     21h
%ifdef DRIVER
        call    findDriver
        mov     dx, textTaken
        je      complain
        mov     dx, handler
        mov     ax, 2500h + kVector
        int     21h
        mov     dx, (handlerEnd - $$ + 100h + 15) / 16
        mov     ax, 3100h               ; stay, code 0
        int     21h
%elifdef TOOL
        call    findDriver
        mov     dx, textNone
        jne     complain
%endif
        mov     ax, 4C00h
        int     21h

%ifdef DRIVER
 %define FINDS
%elifdef TOOL
 %define FINDS
%endif
%ifdef FINDS
; Sets the zero flag when there is a packet driver at the interrupt.
findDriver:
        mov     ax, 3500h + kVector
        int     21h
        lea     di, [bx + 3]
        mov     si, signature
        mov     cx, signatureEnd - signature
        cld
        repe cmpsb
        ret

complain:
        mov     ah, 9
        int     21h
        mov     ax, 4C01h
        int     21h

signature:
        db      "PKT DRVR"
signatureEnd:
%endif
%ifdef DRIVER
textTaken:
        db      "There is a packet driver already.", 13, 10, "$"
%elifdef TOOL
textNone:
        db      "There is no packet driver.", 13, 10, "$"
%endif
text:   db      TEXT, "$"
last:   db      LAST, "$"
