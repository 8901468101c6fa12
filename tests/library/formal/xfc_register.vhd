-- The optional register as wires, whatever its generics say: what is left of a pipeline is a function of its operands,
-- which a proof compares for all of them at once.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_register is
  generic (width : positive; enabled : natural);
  port (sysclk, enable : in std_logic;
        d : in std_logic_vector(width - 1 downto 0);
        q : out std_logic_vector(width - 1 downto 0));
end xfc_register;

architecture bypassed of xfc_register is
begin
  q <= d;
end bypassed;
