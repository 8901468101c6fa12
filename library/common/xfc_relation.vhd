-- Whether a relation holds between two operands that are unordered, equal, less, or none of these.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_relation is
  generic (relation : natural);   -- 0 equal, 1 not equal, 2 less, 3 less or equal, 4 greater, 5 greater or equal
  port (unordered, equal, less : in std_logic;
        holds : out std_logic);
end xfc_relation;

architecture rtl of xfc_relation is
begin
  holds <= equal when relation = 0 else
           not equal when relation = 1 else
           less when relation = 2 else
           less or equal when relation = 3 else
           not unordered and not less and not equal when relation = 4 else not unordered and not less;
end rtl;
