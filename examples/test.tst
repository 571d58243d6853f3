// A test list that passes. A step begins with = (set), ? (ask) or ! (check the reply of the step before).
? ID x
! ID "KT2000"
? SN x
! SN "CH-10421"
// The set point comes back as it was written: 25 with a tolerance of 0.05.
= SP 25
! SP "OK"
? SP x
! SP 25 0.05
// A pause takes one tick of the transfer and sends nothing.
# PAUSE
// Somewhere between the alarm limits: 55 with a tolerance of 130.
? PV x
! PV 55 130
? ALARM x
! ALARM 0
// Constants are read and kept, and change nothing.
# CONST ROOM = 25.0
