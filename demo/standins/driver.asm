; Stand-in for a DOS device driver: says that it is one when it is loaded, and asks DOS not to keep it. NAME is the file that it
; stands for. With STAYS it is kept, as a device that fails every other request.

        cpu     8086
        bits    16
        org     0

kInit           equ     0               ; the only request that a driver gets before it is installed
kCommand        equ     2               ; offsets in a request
kStatus         equ     3
kUnits          equ     13
kEndOffset      equ     14
kEndSegment     equ     16
kFailed         equ     810Ch           ; error and done; general failure
%ifdef STAYS
kAnswer         equ     100h            ; done
kKept           equ     theEnd
%else
kAnswer         equ     kFailed
kKept           equ     0               ; an end at the driver's own start: nothing is kept
%endif

        dd      -1                      ; no further driver in this file
        dw      8000h                   ; a character device
        dw      strategy
        dw      interrupt
        db      "STANDIN$"

request dd      0

strategy:
        mov     [cs:request], bx
        mov     [cs:request + 2], es
        retf

interrupt:
        push    ax
        push    bx
        push    dx
        push    ds
        push    es
        les     bx, [cs:request]
        mov     word [es:bx + kStatus], kFailed
        cmp     byte [es:bx + kCommand], kInit
        jne     done
        mov     word [es:bx + kStatus], kAnswer
        push    cs
        pop     ds
        mov     dx, text
        mov     ah, 9                   ; print up to "$"
        int     21h
        mov     byte [es:bx + kUnits], 0
        mov     word [es:bx + kEndOffset], kKept
        mov     [es:bx + kEndSegment], cs
done:
        pop     es
        pop     ds
        pop     dx
        pop     bx
        pop     ax
        retf

text:   db      NAME, ": a stand-in of the demonstration, not the DOS driver.", 13, 10, "$"
theEnd:
