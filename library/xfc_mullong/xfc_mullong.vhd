-- Multiplies two integers of 32 bits; the result is the low 32 bits of the product, the same for signed and unsigned.
--   step choose:  the rows of the product, for each two bits of bb
--   step rows:    sums of four rows
--   step sum:     the product
-- Latency 3 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_mullong is
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_mullong;

architecture rtl of xfc_mullong is
  constant width : positive := 32;
  signal product : std_logic_vector(2 * width - 1 downto 0);
begin
  -- choose, rows, sum
  multiply : entity work.xfc_product generic map (width, 0, 0, 1, 0, 0, 0, 1)
    port map (sysclk, enable, aa, bb, product);

  sum_0 : entity work.xfc_register generic map (width, 1)
    port map (sysclk, enable, product(width - 1 downto 0), cc);
end rtl;
