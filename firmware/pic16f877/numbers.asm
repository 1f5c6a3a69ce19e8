; SPDX-License-Identifier: MIT
; Arithmetic: decimal conversion in both directions, comparison, 32 x 40 bit product.
;
; number  (4 bytes)  the operand and result of most routines
; factor  (5 bytes)  the factor for a multiplication
; product (8 bytes)  directly after factor
;
; numbers_clear      number = 0.                                                  8 cycles
; numbers_digit      number = number * 10 + W, at most FFFFFFFF.                  218 cycles at most     uses W
; numbers_divide     number = number / 10, remainder in W.                        477 cycles at most     uses W
; numbers_load       number = the four bytes at FSR.                              15 cycles              uses W, FSR
; numbers_store      the four bytes at FSR = number.                              15 cycles              uses W, FSR
; numbers_factor     factor = the five bytes at FSR.                              18 cycles              uses W, FSR
; numbers_below      C = 0: number is below the four bytes at FSR.                21 cycles              uses W, FSR
; numbers_negate     number = -number.                                            15 cycles at most
; numbers_multiply   product = number * factor, 64 bits; destroys number.         1,325 cycles at most   uses W

        include "board.inc"

        global  number, factor, product
        global  numbers_clear, numbers_digit, numbers_divide, numbers_load, numbers_store, numbers_factor
        global  numbers_below, numbers_negate, numbers_multiply

numbers_data    udata
number          res 4
factor          res 5
product         res 8
tens            res 4                   ; numbers_digit: the number before the new digit
rounds          res 1
remainder       res 1

numbers_code    code
numbers_clear:
        clrf    number
        clrf    number + 1
        clrf    number + 2
        clrf    number + 3
        return

; Adds the number to the digit ten times. A carry means that the result exceeds 32 bits.
numbers_digit:
        movwf   remainder
        movf    number, W
        movwf   tens
        movf    number + 1, W
        movwf   tens + 1
        movf    number + 2, W
        movwf   tens + 2
        movf    number + 3, W
        movwf   tens + 3
        call    numbers_clear
        movf    remainder, W
        movwf   number
        movlw   10
        movwf   rounds
digit_add:
        movf    tens, W
        addwf   number, F
        add_up  tens + 1, number + 1
        add_up  tens + 2, number + 2
        add_up  tens + 3, number + 3
        skpnc
        goto    digit_saturate
        decfsz  rounds, F
        goto    digit_add
        return
digit_saturate:
        movlw   0xFF
        movwf   number
        movwf   number + 1
        movwf   number + 2
        movwf   number + 3
        return

; Each round computes one quotient bit and stores it in the bit freed by shifting the dividend.
numbers_divide:
        clrf    remainder
        movlw   32
        movwf   rounds
divide_bit:
        clrc
        rlf     number, F
        rlf     number + 1, F
        rlf     number + 2, F
        rlf     number + 3, F
        rlf     remainder, F
        movlw   10
        subwf   remainder, W
        skpc
        goto    divide_next
        movwf   remainder
        bsf     number, 0
divide_next:
        decfsz  rounds, F
        goto    divide_bit
        movf    remainder, W
        return

numbers_load:
        movf    INDF, W
        movwf   number
        incf    FSR, F
        movf    INDF, W
        movwf   number + 1
        incf    FSR, F
        movf    INDF, W
        movwf   number + 2
        incf    FSR, F
        movf    INDF, W
        movwf   number + 3
        return

numbers_store:
        movf    number, W
        movwf   INDF
        incf    FSR, F
        movf    number + 1, W
        movwf   INDF
        incf    FSR, F
        movf    number + 2, W
        movwf   INDF
        incf    FSR, F
        movf    number + 3, W
        movwf   INDF
        return

numbers_factor:
        movf    INDF, W
        movwf   factor
        incf    FSR, F
        movf    INDF, W
        movwf   factor + 1
        incf    FSR, F
        movf    INDF, W
        movwf   factor + 2
        incf    FSR, F
        movf    INDF, W
        movwf   factor + 3
        incf    FSR, F
        movf    INDF, W
        movwf   factor + 4
        return

; Computes number - limit, but returns only the borrow (C = 0).
numbers_below:
        movf    INDF, W
        subwf   number, W
        incf    FSR, F
        movf    INDF, W
        skpc
        incfsz  INDF, W
        subwf   number + 1, W
        incf    FSR, F
        movf    INDF, W
        skpc
        incfsz  INDF, W
        subwf   number + 2, W
        incf    FSR, F
        movf    INDF, W
        skpc
        incfsz  INDF, W
        subwf   number + 3, W
        return

numbers_negate:
        comf    number, F
        comf    number + 1, F
        comf    number + 2, F
        comf    number + 3, F
        incfsz  number, F
        return
        incfsz  number + 1, F
        return
        incfsz  number + 2, F
        return
        incf    number + 3, F
        return

; Starts with the highest bit of number: each round doubles the product and adds the factor if the bit is 1.
numbers_multiply:
        clrf    product
        clrf    product + 1
        clrf    product + 2
        clrf    product + 3
        clrf    product + 4
        clrf    product + 5
        clrf    product + 6
        clrf    product + 7
        movlw   32
        movwf   rounds
multiply_bit:
        clrc
        rlf     product, F
        rlf     product + 1, F
        rlf     product + 2, F
        rlf     product + 3, F
        rlf     product + 4, F
        rlf     product + 5, F
        rlf     product + 6, F
        rlf     product + 7, F
        rlf     number, F
        rlf     number + 1, F
        rlf     number + 2, F
        rlf     number + 3, F
        skpc
        goto    multiply_next
        movf    factor, W
        addwf   product, F
        add_up  factor + 1, product + 1
        add_up  factor + 2, product + 2
        add_up  factor + 3, product + 3
        add_up  factor + 4, product + 4
        skpc
        goto    multiply_next
        incfsz  product + 5, F
        goto    multiply_next
        incfsz  product + 6, F
        goto    multiply_next
        incf    product + 7, F
multiply_next:
        decfsz  rounds, F
        goto    multiply_bit
        return

        end
