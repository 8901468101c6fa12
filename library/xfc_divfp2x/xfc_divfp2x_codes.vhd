-- The digits in base 4 of -(floor + half), each as its value plus 1; with the highest bit the last one, of code 3, is
-- -2. Between 43 and -43 it is not, so the sign of what floor was taken of does.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divfp2x_codes is
  port (negative : in std_logic;                       -- what floor was taken of
        floor    : in std_logic_vector(7 downto 0);    -- two's complement
        half     : in std_logic;
        codes    : out std_logic_vector(8 downto 0));
end xfc_divfp2x_codes;

architecture rtl of xfc_divfp2x_codes is
  constant ones : unsigned(8 downto 0) := "010101011";
  signal complement : std_logic_vector(8 downto 0);
  signal sum : std_logic_vector(8 downto 0);
begin
  complement <= not floor & not half;
  sum <= std_logic_vector(unsigned(complement) + ones);
  codes <= (not negative and sum(8) and sum(7)) & sum(8 downto 1);
end rtl;
