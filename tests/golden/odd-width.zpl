































































SIZE 1.5 mm, 1.3 mm
^XX
^PW11
^LL10
^MNN
^PON
~SD0
^XZ

^XX
^PQ1
~DGR:CUPS.GRF,20,2,
IF080108010801080108010801080108010IF0^FO0,0^XGR:CUPS.GRF,1,1^FS
^XZ
