-- Says whether a value that loses its `dropped` bits is rounded up to the nearest, to even between two.
-- With `complemented` the value is one low unit below the one that is rounded, as the ones' complement of a negative
-- number is: then its unit and the rounding share the one carry chain behind.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_round_even is
  generic (width : positive);   -- bits that are dropped, at least 2
  port (lowest       : in std_logic;   -- the lowest bit that is kept
        dropped      : in std_logic_vector(width - 1 downto 0);
        complemented : in std_logic;
        up           : out std_logic);
end xfc_round_even;

architecture rtl of xfc_round_even is
  constant zeros : std_logic_vector(width - 2 downto 0) := (others => '0');
  constant ones  : std_logic_vector(width - 2 downto 0) := (others => '1');
  signal half, rest_is_zero, rest_is_ones : std_logic;
begin
  half <= dropped(width - 1);
  rest_is_zero <= '1' when dropped(width - 2 downto 0) = zeros else '0';
  rest_is_ones <= '1' when dropped(width - 2 downto 0) = ones else '0';
  up <= (half and (lowest or not rest_is_zero)) when complemented = '0' else
        (half or (lowest and rest_is_ones));
end rtl;
