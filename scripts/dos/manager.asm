; Stands for the driver of a SCSI adapter: a device that stays in memory, and nothing else.

        cpu     8086
        bits    16
        org     0

kInit           equ     0               ; the only request that it answers
kCommand        equ     2               ; offsets in a request
kStatus         equ     3
kEndOffset      equ     14
kEndSegment     equ     16
kDone           equ     0100h
kUnknown        equ     8103h

        dd      -1                      ; no further driver in this file
        dw      8000h                   ; a character device
        dw      strategy
        dw      interrupt
        db      "SCSIHOST"

request dd      0

strategy:
        mov     [cs:request], bx
        mov     [cs:request + 2], es
        retf

interrupt:
        push    bx
        push    es
        les     bx, [cs:request]
        mov     word [es:bx + kStatus], kUnknown
        cmp     byte [es:bx + kCommand], kInit
        jne     done
        mov     word [es:bx + kStatus], kDone
        mov     word [es:bx + kEndOffset], theEnd
        mov     [es:bx + kEndSegment], cs
done:
        pop     es
        pop     bx
        retf
theEnd:
