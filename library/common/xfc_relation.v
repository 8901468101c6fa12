// Whether a relation holds between two operands that are unordered, equal, less, or none of these.
module xfc_relation
  #(parameter relation = 0)   // 0 equal, 1 not equal, 2 less, 3 less or equal, 4 greater, 5 greater or equal
  (input unordered, equal, less,
   output holds);

  assign holds = relation == 0 ? equal :
                 relation == 1 ? !equal :
                 relation == 2 ? less :
                 relation == 3 ? less | equal :
                 relation == 4 ? !unordered & !less & !equal : !unordered & !less;
endmodule
