// A test list that fails on purpose at its last check, row 4: the set point is 30 and not 25.
= SP 30
! SP "OK"
? SP x
! SP 25 0.5
// Never sent: a failed check ends the run.
= SP 25
