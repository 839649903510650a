; PCIFIND.COM: which driver the PC's network card needs.
;
;   PCIFIND MAP       prints the name of the driver
;   PCIFIND MAP /S    prints the line "SET NIC=NAME", for a batch file
;
; MAP is a text file such as ETC\_MSNET.PCI, with a line for each card: vendor and device number, four hexadecimal digits each,
; and the driver's name, at most eight letters, digits and _ ~ ! # $ & @ -. What follows it counts as a remark. Other lines are
; passed over; of several lines for one card the first counts.
;
; The cards are those on the PCI buses, in their order, as the firmware (INT 1Ah, AH = B1h) lists them. The driver of the first
; one that the map knows is taken, whatever kind of card it is. Exit codes; from 1 on a line on the error output says so:
;
;   0  a driver was found
;   1  the map knows none of the cards; the line has the numbers of the first network card
;   2  the firmware knows no PCI bus, or nothing on it
;   3  the map cannot be read
;   4  other arguments than these
;
; 8086 instructions only. Memory: nothing beyond the 64 KB that DOS gives a .COM program.

        cpu     8086
        bits    16
        org     100h

kTail           equ     81h             ; the arguments in the program's prefix
kNetwork        equ     02h             ; class of network cards
kMostCards      equ     256             ; further ones are passed over
kLineBytes      equ     64              ; of a line; what follows is passed over
kBufferBytes    equ     4096
kNameBytes      equ     8
kEndOfText      equ     1Ah

; Registers of a card.
kVendor         equ     00h
kDevice         equ     02h
kClass          equ     0Ah             ; sub-class, class
kHeader         equ     0Eh

        cld
        call    readArguments
        mov     dx, textUsage
        mov     al, 4
        jc      complain
        call    findBus
        jc      noBusHere
        call    listCards
        cmp     word [cards], 0         ; some firmware speaks of a bus although the PC has none
noBusHere:
        mov     dx, textNoBus
        mov     al, 2
        jbe     complain
        call    readMap
        mov     dx, textNoMap
        mov     al, 3
        jc      complain
        mov     ax, [best]
        cmp     ax, [cards]
        je      unknown

        mov     dx, textSet
        cmp     byte [isForBatch], 0
        je      nameOnly
        mov     cx, textSetEnd - textSet
        call    print
nameOnly:
        mov     dx, name
        mov     cx, [nameBytes]
        call    print
        mov     dx, textLineEnd
        mov     cx, 2
        call    print
        mov     ax, 4C00h
        int     21h

unknown:
        mov     dx, textNoCard
        cmp     byte [hasNetworkCard], 0
        je      saysWhich
        mov     di, textVendor
        mov     dx, [networkVendor]
        call    putHex
        mov     di, textDevice
        mov     dx, [networkDevice]
        call    putHex
        mov     dx, textUnknown
saysWhich:
        mov     al, 1
; Prints the text at DX up to its line end on the error output and ends with the code AL.
complain:
        push    ax
        mov     di, dx
        push    ds
        pop     es
        mov     al, 10
        mov     cx, 0FFFFh
        repne scasb
        mov     cx, di
        sub     cx, dx
        mov     bx, 2
        mov     ah, 40h
        int     21h
        pop     ax
        mov     ah, 4Ch
        int     21h

; Prints CX letters at DX on the standard output.
print:
        mov     bx, 1
        mov     ah, 40h
        int     21h
        ret

; Writes DX as four hexadecimal digits to DI.
putHex:
        mov     cx, 4
nextPut:
        push    cx
        mov     cl, 4
        rol     dx, cl
        pop     cx
        mov     al, dl
        and     al, 0Fh
        add     al, "0"
        cmp     al, "9"
        jbe     isDigit
        add     al, "A" - "9" - 1
isDigit:
        stosb
        loop    nextPut
        ret

; Sets [isForBatch] and ends the path at [path] with a 0. Returns with the carry flag set when the arguments are others than
; those above.
readArguments:
        mov     si, kTail
nextArgument:
        lodsb
        cmp     al, 13
        je      argumentsRead
        cmp     al, " "
        je      nextArgument
        cmp     al, 9
        je      nextArgument
        cmp     al, "/"
        je      readSwitch
        cmp     word [path], 0
        jne     argumentsBad
        lea     di, [si - 1]
        mov     [path], di
nextLetter:
        lodsb
        cmp     al, "/"
        je      pathEnd
        cmp     al, " "
        ja      nextLetter
pathEnd:
        dec     si
        mov     [pathEndAt], si
        jmp     nextArgument
readSwitch:
        lodsb
        and     al, 0DFh                ; a capital
        cmp     al, "S"
        jne     argumentsBad
        mov     byte [isForBatch], 1
        jmp     nextArgument
argumentsRead:
        cmp     word [path], 0
        je      argumentsBad
        mov     di, [pathEndAt]
        mov     byte [di], 0
        clc
        ret
argumentsBad:
        stc
        ret

; Sets [lastBus]. Returns with the carry flag set when the firmware knows no PCI bus.
findBus:
        mov     ax, 0B101h
        xor     cx, cx
        xor     dx, dx
        stc                             ; old firmware leaves all as it is
        int     1Ah
        jc      noBus
        test    ah, ah
        jnz     noBus
        cmp     dx, "PC"                ; of "PCI "
        jne     noBus
        mov     [lastBus], cl
        clc
        ret
noBus:
        stc
        ret

; Fills `list` with the vendor and device numbers of [cards] cards, and notes the first network card.
listCards:
        mov     word [place], 0
nextCard:
        mov     di, kVendor
        call    readCard
        inc     cx
        cmp     cx, 1                   ; FFFFh or 0: no card
        jbe     notThere
        dec     cx
        mov     [vendor], cx
        mov     di, kDevice
        call    readCard
        mov     [device], cx
        call    addCard
        mov     di, kHeader
        call    readCard
        test    byte [place], 7
        jnz     nextFunction
        test    cl, 80h                 ; has it further functions
        jnz     nextFunction
notThere:
        test    byte [place], 7
        jnz     nextFunction            ; a card's functions may have gaps
        or      byte [place], 7
nextFunction:
        inc     byte [place]
        jnz     nextCard
        mov     al, [place + 1]
        inc     byte [place + 1]
        cmp     al, [lastBus]
        jb      nextCard
        mov     ax, [cards]
        mov     [best], ax              ; none yet
        ret

addCard:
        mov     bx, [cards]
        cmp     bx, kMostCards
        jae     cardAdded
        inc     word [cards]
        add     bx, bx
        add     bx, bx
        mov     ax, [vendor]
        mov     [bx + list], ax
        mov     ax, [device]
        mov     [bx + list + 2], ax
        cmp     byte [hasNetworkCard], 0
        jne     cardAdded
        mov     di, kClass
        call    readCard
        cmp     ch, kNetwork
        jne     cardAdded
        inc     byte [hasNetworkCard]
        mov     ax, [vendor]
        mov     [networkVendor], ax
        mov     ax, [device]
        mov     [networkDevice], ax
cardAdded:
        ret

; Returns the word of register DI of the card at [place] in CX, FFFFh when the firmware fails. The other registers are lost.
readCard:
        mov     bx, [place]
        mov     ax, 0B109h
        int     1Ah
        jnc     cardRead
        mov     cx, 0FFFFh
cardRead:
        cld
        push    ds
        pop     es
        ret

; Compares the lines of the map with the cards. Returns with the carry flag set when it cannot be read.
readMap:
        mov     dx, [path]
        mov     ax, 3D00h               ; open for reading
        int     21h
        jc      mapRead
        mov     [map], ax
        mov     di, line
nextByte:
        call    readByte
        jc      closeMap
        jz      lastLine
        cmp     al, kEndOfText
        je      lastLine
        cmp     al, 13
        je      wholeLine
        cmp     al, 10
        je      wholeLine
        cmp     di, line + kLineBytes
        jae     nextByte
        stosb
        jmp     nextByte
wholeLine:
        call    compareLine
        mov     di, line
        jmp     nextByte
lastLine:
        call    compareLine
        clc
closeMap:
        pushf
        mov     bx, [map]
        mov     ah, 3Eh
        int     21h
        popf
mapRead:
        ret

; Returns the next byte of the map in AL; the zero flag is set at its end, the carry flag when it cannot be read.
readByte:
        mov     si, [bufferAt]
        cmp     si, [bufferEnd]
        jb      hasByte
        mov     bx, [map]
        mov     cx, kBufferBytes
        mov     dx, buffer
        mov     ah, 3Fh
        int     21h
        jc      byteRead
        test    ax, ax
        jz      byteRead
        mov     si, buffer
        add     ax, si
        mov     [bufferEnd], ax
hasByte:
        lodsb
        mov     [bufferAt], si
        test    sp, sp                  ; neither zero nor carry
byteRead:
        ret

; Takes the driver of the line that ends before DI when it is for a card in front of the best one so far.
compareLine:
        mov     byte [di], 0            ; there is a place for it
        mov     si, line
        call    readHex
        jc      lineDone
        mov     [vendor], dx
        call    readHex
        jc      lineDone
        call    skipSpace
        mov     bx, si
nextOfName:
        lodsb
        call    isOfName
        je      nextOfName
        cmp     al, ";"
        je      nameEnd
        cmp     al, " "
        ja      lineDone                ; no name that a file or a batch file could have
nameEnd:
        dec     si
        sub     si, bx
        jz      lineDone
        cmp     si, kNameBytes
        ja      lineDone
        mov     cx, si

        mov     si, list
        xor     ax, ax
nextInList:
        cmp     ax, [best]
        je      lineDone
        cmp     dx, [si + 2]
        jne     otherCard
        mov     di, [vendor]
        cmp     di, [si]
        je      isCard
otherCard:
        add     si, 4
        inc     ax
        jmp     nextInList
isCard:
        mov     [best], ax
        mov     [nameBytes], cx
        mov     si, bx
        mov     di, name
        rep movsb
lineDone:
        ret

; Returns the number of four hexadecimal digits at SI, which spaces may precede and have to follow, in DX and SI after it; the
; carry flag is set when there is none.
readHex:
        call    skipSpace
        mov     cx, 4
nextHex:
        push    cx
        mov     cl, 4
        shl     dx, cl
        pop     cx
        lodsb
        sub     al, "0"
        cmp     al, 10
        jb      addDigit
        add     al, "0"
        and     al, 0DFh                ; a capital
        sub     al, "A" - 10
        cmp     al, 10
        jb      notHex
        cmp     al, 16
        jae     notHex
addDigit:
        or      dl, al
        loop    nextHex
        cmp     byte [si], " "
        je      isHex
        cmp     byte [si], 9
        jne     notHex
isHex:
        clc
        ret
notHex:
        stc
        ret

skipSpace:
        lodsb
        cmp     al, " "
        je      skipSpace
        cmp     al, 9
        je      skipSpace
        dec     si
        ret

; Returns with the zero flag set when AL may be in the name of a driver. CX is lost.
isOfName:
        push    ax
        cmp     al, "0"
        jb      isMark
        cmp     al, "9"
        jbe     itIs
        and     al, 0DFh                ; a capital
        cmp     al, "A"
        jb      isMark
        cmp     al, "Z"
        jbe     itIs
isMark:
        pop     ax
        push    di
        mov     di, marks
        mov     cx, marksEnd - marks
        repne scasb
        pop     di
        ret
itIs:
        cmp     al, al
        pop     ax
        ret

marks:  db      "_~!#$&@-"
marksEnd:
textSet:
        db      "SET NIC="
textSetEnd:
textLineEnd:
        db      13, 10
textUsage:
        db      "PCIFIND MAP [/S]: prints the driver that the map has for a card of this PC", 13, 10
textNoBus:
        db      "PCIFIND: this PC has no PCI bus", 13, 10
textNoMap:
        db      "PCIFIND: the map cannot be read", 13, 10
textNoCard:
        db      "PCIFIND: this PC has no network card on a PCI bus", 13, 10
textUnknown:
        db      "PCIFIND: the map has no driver for the network card "
textVendor:
        db      "0000 "
textDevice:
        db      "0000", 13, 10

path            dw      0
pathEndAt       dw      0
isForBatch      db      0
lastBus         db      0
place           dw      0               ; of a card: device and function, bus
vendor          dw      0
device          dw      0
cards           dw      0
best            dw      0               ; number of the first card in the list that has a driver, or [cards]
hasNetworkCard  db      0
networkVendor   dw      0
networkDevice   dw      0
map             dw      0
bufferAt        dw      0
bufferEnd       dw      0
nameBytes       dw      0

        section .bss
name:   resb    kNameBytes
line:   resb    kLineBytes + 1
list:   resw    2 * kMostCards
buffer: resb    kBufferBytes
